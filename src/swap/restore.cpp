#include "swap/backup.h"

#include "catalogue/message.h"
#include "swap/folder_guard.h"
#include "swap/install.h"
#include "swap/restore_steps.h"
#include "swap/state_files.h"
#include "swap/swap_notes.h"
#include "swap/swap_run.h"

namespace kestrova
{

namespace
{

struct Critical {
    Msg folder;
    Msg pattern;
};
constexpr Critical criticalFiles[] = {{Msg::FragRoot, Msg::PatDat},
                                      {Msg::FragRoot, Msg::PatH},
                                      {Msg::DirData, Msg::PatTr4},
                                      {Msg::DirData, Msg::PatPak}};

void Show(ProgressScope* progress, Msg label)
{
    if (progress == nullptr)
        return;
    progress->SetLabel(GetMsg(label));
    progress->Step();
}

Status DeleteCritical(Session& session)
{
    const Path trle = ResolvePath(session.TrleFolder());
    for (const Critical& kind : criticalFiles)
        for (const Path& file :
             ListFiles(InFolder(trle, RowText(kind.folder)), RowText(kind.pattern))) {
            const Path relative = file.lexically_relative(trle);
            if (auto status = KeepOriginal(session, relative); !status)
                return status;
            if (auto status = DeleteFile(file); !status)
                return status;
        }
    return DeleteFile(session.MarkerPath());
}

/// The files of one folder of the backup, the bar following.
Status CopyFilesWithBar(Session& session, const Path& folder, ProgressScope* progress)
{
    const std::vector<Path> files =
        ListFiles(session.BackupFolder() / folder, RowText(Msg::PatAll));
    for (std::size_t i = 0; i < files.size(); ++i) {
        // A savegame of the time of the backup is no original: what the player has now stays.
        if (IsPlayersPlace(folder / files[i].filename()))
            continue;
        if (auto status = RestoreOriginal(session, folder / files[i].filename()); !status)
            return status;
        if (progress != nullptr) {
            progress->SetBar(i + 1, files.size());
            progress->Step();
        }
    }
    return {};
}

Path Relative(std::string_view fragment)
{
    return InFolder({}, fragment).relative_path();
}

} // namespace

Status FinishRestore(Session& session, const SwapJournal& journal, ProgressScope* progress)
{
    Show(progress, Msg::RestoreRemovingCritical);
    if (auto status = DeleteCritical(session); !status)
        return status;
    Show(progress, Msg::RestoreCopyingOriginal);
    for (const Path& folder : {Path{}, Relative(RowText(Msg::DirData))})
        if (auto status = CopyFilesWithBar(session, folder, progress); !status)
            return status;
    OwnerRecord owner;
    if (journal.from >= 0)
        SetOwner(session, owner, LevelPlace{journal.from, Path{journal.fromStore}.parent_path()});
    if (auto status = WriteOwner(session, std::move(owner)); !status)
        return status;
    return DropJournal(session);
}

void RestoreOriginalConfiguration(Session& session, ProgressScope& progress)
{
    const Operation running{session};
    if (!BackupPresent(session)) {
        session.host.Tell(Tone::Error, GetMsg(Msg::NoBackupToRestore));
        return;
    }
    if (!MayChangeTrle(session))
        return;
    Show(&progress, Msg::RestoreRemovingLevel);
    (void)RestoreFast(session); // its failures have been told; the critical files go anyway
    if (!FolderExists(session.TrleFolder()))
        return;
    if (FileExists(JournalPath(session))) {
        session.host.Tell(Tone::Error, GetMsg(Msg::WorkPending));
        return;
    }

    SwapJournal journal;
    journal.folder = MarkOf(session.TrleFolder());
    journal.phase = SwapPhase::Restore;
    if (const auto owner = OwnerThatCounts(session)) {
        journal.from = owner->owner.value_or(-1); // -1: the state in the folder is nobody's
        journal.fromStore = StateStoreOf(session, StateOwner(session)).native();
    }
    auto status = WriteJournal(session, journal);
    if (!status) {
        TellFailure(session, GetMsg(Msg::CannotWriteJournal), status.Error());
        return;
    }
    status = FinishRestore(session, journal, &progress);
    if (!status) {
        TellFailure(session, GetMsg(Msg::InterruptedFailed), status.Error());
        return;
    }
    if (session.preferences.fullBackup && session.host.AskYesNo(GetMsg(Msg::AskRestoreFolders)))
        for (const std::string& folder : Split(RowText(Msg::RestoreFolders), '|')) {
            progress.SetLabel(GetMsg(Msg::RestoringFolder) + folder);
            const auto copied = CopyFilesWithBar(session, Relative(folder), &progress);
            if (!copied)
                TellFailure(session, GetMsg(Msg::ErrorRestoringFolder) + folder, copied.Error());
        }
    progress.SetLabel(GetMsg(Msg::RestoreFinished));
    session.list.Refresh();
    session.host.Tell(Tone::Plain, GetMsg(Msg::RestoredOriginal));
}

bool RestoreFastWithWords(Session& session)
{
    const Operation running{session};
    if (!MayChangeTrle(session))
        return false;
    const bool done = RestoreFast(session);
    session.host.Tell(done ? Tone::Plain : Tone::Error,
                      GetMsg(done ? Msg::FastRestoreDone : Msg::FastRestoreFailed));
    return done;
}

} // namespace kestrova
