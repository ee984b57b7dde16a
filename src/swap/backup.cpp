#include "swap/backup.h"

#include "archive/level_folders.h"
#include "catalogue/message.h"
#include "session/preferences_file.h"
#include "swap/backup_folders.h"
#include "swap/marker.h"
#include "swap/recovery.h"

namespace kestrova
{

namespace
{

constexpr double fullNeed = 251658240;   // bytes, the Level Editor's own distribution
constexpr double compactNeed = 94371840; // bytes

/// The Level Editor's folder when the person says that it is original; empty otherwise.
Path ConfirmTrleOriginal(Session& session, const BackupWishes& wishes)
{
    const Path trle = session.TrleFolder();
    if (!TellUnlessKnown(session))
        return {};
    if (const LevelCode code = CurrentLevelCode(session); code != originalCode) {
        session.host.Tell(Tone::Error, GetMsg(Msg::BackupWithLevel, {ZeroPadded(code, 4)}));
        return {};
    }
    const std::string line{lineBreak};
    const bool original =
        wishes.folderIsOriginal ||
        session.host.AskYesNo(line + GetMsg(Msg::ConfirmOriginalNeed) + line +
                                  GetMsg(Msg::ConfirmOriginalAsk, {TextOf(trle)}) +
                                  GetMsg(Msg::ConfirmOriginalNote),
                              Consent::Explicit);
    if (original)
        return trle;
    session.host.Tell(Tone::Error, GetMsg(Msg::OriginalTips, {lineBreak}) + line +
                                       GetMsg(Msg::OriginalSetupAgain, {lineBreak, lineBreak}));
    return {};
}

/// What a backup of this very folder takes, in words: the figures of the question are those of the
/// Level Editor's own distribution.
std::string SizesInWords(const Path& trle)
{
    double compact = FolderSize(InFolder(trle, RowText(Msg::DirData))) +
                     FolderSize(InFolder(trle, RowText(Msg::DirGraphics)));
    for (const std::string& pattern : Split(RowText(Msg::CompactPatterns), '|'))
        for (const Path& file : ListFiles(trle, pattern))
            compact += static_cast<double>(FileSize(file));
    return GetMsg(Msg::BackupSizesHere, {FormatSize(FolderSize(trle)), FormatSize(compact)});
}

bool AsksForFull(Session& session, const Path& trle)
{
    const std::string line{lineBreak};
    return session.host.AskYesNo(GetMsg(Msg::AskFullBackup, {line, line}) + line + line +
                                     SizesInWords(trle),
                                 Consent::YesKeeps);
}

bool HasSpace(Session& session, const Path& trle, double need)
{
    const auto free = session.machine.FreeSpace(session.programFolder);
    if (!free || static_cast<double>(*free) >= need)
        return true;
    session.host.Tell(Tone::Error,
                      GetMsg(Msg::DriveWithoutSpace, {TextOf(session.programFolder)}) +
                          FormatSize(need) + ")",
                      SizesInWords(trle));
    return false;
}

bool CopyFull(Session& session, const Path& trle, const Path& target)
{
    const auto progress =
        session.host.BeginProgress(ProgressWindow::Progress, GetMsg(Msg::FileCopyInProgress));
    if (!CopyTreeWithProgress(session, trle, target, progress.get(), Verify::Content))
        return false;
    const Path audio = InFolder(target, RowText(Msg::DirAudio));
    const Path script = InFolder(target, RowText(Msg::DirScript));
    if (AnyFile(audio, RowText(Msg::PatWav)) || AnyFile(script, RowText(Msg::PatAllFiles)))
        return true;
    session.preferences.fullBackup = false;
    return false;
}

bool CopyCompact(Session& session, const Path& trle, const Path& target)
{
    const auto failed = [&](const Failure& failure) {
        TellFailure(session, GetMsg(Msg::CannotWriteInFolder) + TextOf(session.BackupFolder()),
                    failure);
        return false;
    };
    if (const auto status = MakeFolder(target); !status)
        return failed(status.Error());
    const auto progress =
        session.host.BeginProgress(ProgressWindow::Progress, GetMsg(Msg::CreationCompactBackup));
    progress->SetLabel(GetMsg(Msg::CreatingFolders));
    for (const std::string& folder : Split(RowText(Msg::CompactFolders), '|'))
        if (const auto status = MakeFolder(InFolder(target, folder)); !status)
            return failed(status.Error());
    progress->SetLabel(GetMsg(Msg::CopyFromTrle));
    for (const std::string& pattern : Split(RowText(Msg::CompactPatterns), '|')) {
        progress->Step();
        if (const auto status =
                CopyMatching(trle, target, pattern, {Verify::Content, false, false, {}});
            !status)
            return failed(status.Error());
    }
    progress->SetLabel(GetMsg(Msg::CopyFromData));
    if (!CopyTreeWithProgress(session, InFolder(trle, RowText(Msg::DirData)),
                              InFolder(target, RowText(Msg::DirData)), progress.get(),
                              Verify::Content))
        return false;
    progress->SetLabel(GetMsg(Msg::CopyFromGraphics));
    const Path graphics = InFolder(trle, RowText(Msg::DirGraphics));
    return !FolderExists(graphics) ||
           CopyTreeWithProgress(session, graphics, InFolder(target, RowText(Msg::DirGraphics)),
                                progress.get(), Verify::Content);
}

/// `keepOld`: files of the old backup that the folder lacks stay in the new one.
bool MakeBackup(Session& session, bool refresh, bool keepOld, const BackupWishes& wishes)
{
    const Operation running{session};
    if (!RecoverInterruptedWork(session))
        return false;
    const Path trle = ConfirmTrleOriginal(session, wishes);
    if (trle.empty())
        return false;
    const bool full = refresh || wishes.form == BackupForm::Full ||
                      (wishes.form == BackupForm::Ask && AsksForFull(session, trle));
    if (!refresh && !HasSpace(session, trle, full ? fullNeed : compactNeed))
        return false;

    const Path target = NewBackupFolder(session);
    if (!SettleBackupFolders(session))
        return false;
    bool made = !keepOld || !FolderExists(session.BackupFolder()) ||
                CopyTreeWithProgress(session, session.BackupFolder(), target, nullptr);
    made = made && (full ? CopyFull(session, trle, target) : CopyCompact(session, trle, target));
    if (made)
        if (const auto status = ExchangeBackup(session); !status) {
            TellFailure(session, GetMsg(Msg::BackupNotEqual), status.Error());
            made = false;
        }
    if (!made) {
        if (FolderExists(target))
            (void)RemoveTree(target); // cleared again at the next start
        return false;
    }
    session.preferences.fullBackup = full;
    if (const auto status = WritePreferencesFile(session); !status)
        TellFailure(session, GetMsg(Msg::CannotSavePreferences), status.Error());
    return true;
}

} // namespace

bool BackupPresent(const Session& session)
{
    const Path backup = session.BackupFolder();
    return FolderExists(backup) && AnyFile(backup, RowText(Msg::PatDat)) &&
           AnyFile(backup, RowText(Msg::PatBmp)) &&
           AnyFile(InFolder(backup, RowText(Msg::DirData)), RowText(Msg::PatTr4));
}

bool MakeTrleBackup(Session& session, bool refresh, const BackupWishes& wishes)
{
    if (!refresh && BackupPresent(session))
        return true;
    return MakeBackup(session, refresh, refresh, wishes);
}

bool RefreshFullBackup(Session& session, const BackupWishes& wishes)
{
    bool keepOld = false;
    if (!session.preferences.fullBackup) {
        keepOld = !session.host.AskYesNo(GetMsg(Msg::AskRemoveOldBackup));
    } else if (!session.host.AskYesNo(
                   GetMsg(Msg::AskRefreshBackup, {lineBreak, TextOf(session.TrleFolder())}))) {
        session.list.Refresh();
        return false;
    }
    if (!keepOld)
        session.list.ShowActivity(GetMsg(Msg::RemovingOldBackup));
    session.list.ShowActivity(GetMsg(Msg::CopyingFilesInProgress));
    const bool made = MakeBackup(session, true, keepOld, wishes);
    if (!made)
        session.host.Tell(Tone::Error,
                          GetMsg(Msg::ErrorCreatingBackup) + TextOf(session.BackupFolder()));
    session.list.Refresh();
    return made;
}

} // namespace kestrova
