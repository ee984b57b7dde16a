#include "swap/backup.h"
#include "swap/backup_state.h"

#include "archive/level_folders.h"
#include "core/copying.h"
#include "core/file_kinds.h"
#include "core/look.h"
#include "core/name_set.h"
#include "core/removal.h"
#include "core/size_words.h"
#include "formats/marker.h"
#include "formats/trle_folder.h"
#include "history/players_files.h"
#include "history/standing.h"
#include "history/swap_journal_file.h"
#include "originals/backup_folders.h"
#include "originals/backup_waves.h"
#include "originals/trle_tree.h"
#include "session/operation.h"
#include "session/preferences_file.h"
#include "session/telling.h"
#include "session/tree_progress.h"
#include "swap/backup_sizes.h"
#include "swap/file_names.h"
#include "swap/recovery.h"
#include "swap/sounds_left.h"
#include "swap/swap_run.h"
#include "swap/unknown_level.h"
#include "words/core.h"
#include "words/restore.h"
#include "words/session.h"
#include "words/storage.h"

#include <algorithm>

namespace kestrova
{

namespace
{

bool MayForgetLevel(Host& host, const Folders& folders, LevelCode code, const BackupWishes& wishes)
{
    const std::string level = ZeroPadded(code, 4);
    const std::string folder = TextOf(folders.trle);
    if (wishes.folderIsOriginal ||
        host.AskYesNo(GetMsg(Msg::AskForgetLevel, {level, folder, lineBreak}), Consent::Explicit))
        return true;
    host.Tell(Tone::Error, GetMsg(Msg::BackupLevelUnknown, {level, folder, folder, folder}));
    return false;
}

/// The Level Editor's folder when the person says that it is original; empty otherwise.
Path ConfirmTrleOriginal(const SwapParts& parts, const BackupWishes& wishes)
{
    const Path trle = parts.folders.trle;
    if (!TellUnlessKnown(parts.host, parts.folders, parts.archive))
        return {};
    if (const LevelCode code = CurrentLevelCode(parts.folders, parts.archive);
        code != originalCode) {
        if (!IsUnknownLevel(parts.folders)) {
            parts.host.Tell(Tone::Error, GetMsg(Msg::BackupWithLevel, {ZeroPadded(code, 4)}));
            return {};
        }
        return MayForgetLevel(parts.host, parts.folders, code, wishes) && ForgetLevel(parts, code)
                   ? trle
                   : Path{};
    }
    const std::string line{lineBreak};
    const bool original = wishes.folderIsOriginal ||
                          parts.host.AskYesNo(line + GetMsg(Msg::ConfirmOriginalNeed) + line +
                                                  GetMsg(Msg::ConfirmOriginalAsk, {TextOf(trle)}) +
                                                  GetMsg(Msg::ConfirmOriginalNote),
                                              Consent::Explicit);
    if (original)
        return trle;
    parts.host.Tell(Tone::Error, GetMsg(Msg::OriginalTips, {lineBreak}) + line +
                                     GetMsg(Msg::OriginalSetupAgain, {lineBreak, lineBreak}));
    return {};
}

/// What a backup of this very folder takes, in words: the figures of the question are those of the
/// Level Editor's own distribution. Nothing where the folder cannot be read just now.
std::string SizesInWords(const Path& trle)
{
    const auto sizes = MeasureBackup(trle);
    if (!sizes)
        return {};
    return GetMsg(Msg::BackupSizesHere, {SizeInWords(static_cast<double>(sizes->full)),
                                         SizeInWords(static_cast<double>(sizes->compact))});
}

bool AsksForFull(Host& host, const Path& trle)
{
    const std::string line{lineBreak};
    return host.AskYesNo(GetMsg(Msg::AskFullBackup, {line, line}) + line + line +
                             SizesInWords(trle),
                         Consent::YesKeeps);
}

bool HasSpace(Host& host, Machine& machine, const Folders& folders, const Path& trle, double need)
{
    const auto free = machine.FreeSpace(folders.program);
    if (!free || static_cast<double>(*free) >= need)
        return true;
    host.Tell(Tone::Error,
              GetMsg(Msg::DriveWithoutRoom, {TextOf(folders.program)}) + FormatSize(need) + ")",
              SizesInWords(trle));
    return false;
}

bool CopyFull(Host& host, PreferencesRecord& preferences, const Path& trle, const Path& target,
              const SoundsLeft& leftovers)
{
    const auto progress =
        host.BeginProgress(ProgressWindow::Progress, GetMsg(Msg::FileCopyInProgress));
    progress->AllowStop();
    if (const auto copied = CopyThroughLinks(
            trle, target, *progress, [&](const Path& file) { return leftovers.OriginalOf(file); });
        !copied)
        return DoneOrTold(host, copied);
    const Path audio = InFolder(target, OnDisk::DirAudio);
    const Path script = InFolder(target, OnDisk::DirScript);
    const auto waves = ListFiles(audio, OnDisk::PatWav);
    const auto scripts = ListFiles(script, OnDisk::PatAllFiles);
    if (!waves || !scripts)
        return TellFolderNotRead(host, waves ? scripts.Error() : waves.Error());
    if (!waves->empty() || !scripts->empty())
        return true;
    preferences.fullBackup = false;
    return false;
}

bool CopyCompact(Host& host, const Folders& folders, const Path& trle, const Path& target)
{
    const auto failed = [&](const Failure& failure) {
        TellFailure(host, GetMsg(Msg::CannotWriteInFolder) + TextOf(folders.Backup()), failure);
        return false;
    };
    if (const auto status = MakeFolder(target); !status)
        return failed(status.Error());
    const auto progress =
        host.BeginProgress(ProgressWindow::Progress, GetMsg(Msg::CreationCompactBackup));
    progress->AllowStop();
    progress->SetLabel(GetMsg(Msg::CreatingFolders));
    for (const std::string& folder : Split(OnDisk::CompactFolders, '|'))
        if (const auto status = MakeFolder(InFolder(target, folder)); !status)
            return failed(status.Error());
    progress->SetLabel(GetMsg(Msg::CopyFromTrle));
    for (const std::string& pattern : Split(OnDisk::CompactPatterns, '|')) {
        if (!progress->Step())
            return false;
        if (const auto status =
                CopyMatching(trle, target, pattern, {Verify::Content, false, false, {}});
            !status)
            return failed(status.Error());
    }
    const auto copyFolder = [&](Message label, std::string_view folder) {
        progress->SetLabel(GetMsg(label));
        return DoneOrTold(host, CopyThroughLinks(InFolder(trle, folder), InFolder(target, folder),
                                                 *progress, [](const Path& file) { return file; }));
    };
    const auto graphics = IsFolder(InFolder(trle, OnDisk::DirGraphics));
    if (!graphics)
        return TellFolderNotRead(host, graphics.Error());
    return copyFolder(Msg::CopyFromData, OnDisk::DirData) &&
           (!*graphics || copyFolder(Msg::CopyFromGraphics, OnDisk::DirGraphics));
}

/// `keepOld`: files of the old backup that the folder lacks stay in the new one.
bool MakeBackup(Session& session, bool refresh, bool keepOld, const BackupWishes& wishes)
{
    const Operation running{session};
    if (!RecoverInterruptedWork(session))
        return false;
    const auto other = BackupOfAnotherFolder(session.host, session.Folders(), session.preferences);
    if (!other)
        return TellFolderNotRead(session.host, other.Error());
    const bool ofAnother = other->has_value();
    keepOld = keepOld && !ofAnother;
    const Path trle = ConfirmTrleOriginal(session, wishes);
    if (trle.empty())
        return false;
    const bool full = refresh || wishes.form == BackupForm::Full ||
                      (wishes.form == BackupForm::Ask && AsksForFull(session.host, trle));
    if (!refresh &&
        !HasSpace(session.host, session.machine, session.Folders(), trle, BackupNeed(full)))
        return false;

    const Path target = NewBackupFolder(session.Folders());
    if (!DoneOrTold(session.host, SettleBackupFolders(session.Folders())))
        return false;
    const auto hasOld = IsFolder(session.Folders().Backup());
    SoundsLeft leftovers{session};
    const auto known = leftovers.Find();
    if (!hasOld || !known)
        return TellFolderNotRead(session.host, hasOld ? known.Error() : hasOld.Error());
    bool made =
        !keepOld || !*hasOld ||
        DoneOrTold(session.host, CopyTreeWithProgress(session.Folders().Backup(), target, nullptr));
    made = made && (full ? CopyFull(session.host, session.preferences, trle, target, leftovers)
                         : CopyCompact(session.host, session.Folders(), trle, target));
    if (made)
        if (const auto status = ExchangeBackup(session.Folders(), full, ofAnother); !status) {
            TellFailure(session.host, GetMsg(Msg::BackupNotEqual), status.Error());
            made = false;
        }
    if (!made) {
        (void)ClearPlace(target); // cleared again at the next start
        return false;
    }
    session.preferences.fullBackup = full;
    if (!full)
        NoteWaves(session.Folders());
    if (const auto status =
            WritePreferencesFile(session.Folders(), session.preferences, session.settings);
        !status)
        TellFailure(session.host, GetMsg(Msg::CannotSavePreferences), status.Error());
    if (full)
        leftovers.Settle();
    return true;
}

/// The folder was newly chosen and the backup is of another one.
bool MakeBackupOfThisFolder(Session& session, const Path& other, const BackupWishes& wishes)
{
    const auto back = BringBackupBack(session.Folders(), session.preferences);
    if (!back) {
        TellFailure(session.host, GetMsg(Msg::BackupNotSetAside), back.Error());
        return false;
    }
    if (*back) {
        session.host.Tell(Tone::Plain, GetMsg(Msg::BackupComesBack));
        return true;
    }
    if (session.host.AskYesNo(GetMsg(Msg::AskBackupOfThis,
                                     {TextOf(other), TextOf(session.TrleFolder()), lineBreak})) &&
        MakeBackup(session, false, false, wishes))
        return true;
    session.host.Tell(Tone::Warning, GetMsg(Msg::BackupOfAnother, {TextOf(other)}));
    return false;
}

} // namespace

bool MakeTrleBackup(Session& session, bool refresh, const BackupWishes& wishes)
{
    const auto backup = LookAtBackup(session.Folders());
    if (!backup)
        return TellFolderNotRead(session.host, backup.Error());
    if (!refresh && *backup == BackupState::Present) {
        const auto other =
            BackupOfAnotherFolder(session.host, session.Folders(), session.preferences);
        if (!other)
            return TellFolderNotRead(session.host, other.Error());
        return !*other || MakeBackupOfThisFolder(session, **other, wishes);
    }
    if (!refresh) {
        const auto back = BringBackupBack(session.Folders(), session.preferences);
        if (!back)
            return TellFolderNotRead(session.host, back.Error());
        if (*back)
            return true; // set aside when another folder was chosen
    }
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
    session.list.ShowActivity(GetMsg(Msg::CopyingFilesLabel));
    const bool made = MakeBackup(session, true, keepOld, wishes);
    if (!made)
        session.host.Tell(Tone::Error,
                          GetMsg(Msg::ErrorCreatingBackup) + TextOf(session.Folders().Backup()));
    session.list.Refresh();
    return made;
}

} // namespace kestrova
