#include "swap/restore.h"

#include "swap/backup_state.h"

#include "archive/level_folders.h"
#include "formats/marker.h"
#include "formats/trle_folder.h"
#include "history/standing.h"
#include "history/swap_journal_file.h"
#include "session/operation.h"
#include "session/telling.h"
#include "swap/folder_guard.h"
#include "swap/install.h"
#include "swap/live_state.h"
#include "swap/placements.h"
#include "swap/recovery.h"
#include "swap/restore_steps.h"
#include "swap/swap_run.h"
#include "swap/whereabouts.h"
#include "words/restore.h"

namespace kestrova
{

namespace
{

/// The ordinary removal, which tells what it cannot do; the critical files go anyway. While the
/// archive is away nothing else comes in: the level's savegames stay live and wait for their store.
/// The originals that were told as not back.
std::vector<std::string> RemoveLevelFirst(Session& session)
{
    const bool archiveIsThere =
        FindLevel(session.archive, originalCode) >= 0 &&
        FolderExists(FolderFromText(Trim(session.archive.header.secondaryFolder)));
    if (archiveIsThere) {
        if (RestoreFast(session))
            return {};
        session.host.Tell(Tone::Warning, GetMsg(Msg::RestoreGoesOn));
        const auto owner =
            ReadOwner(session.Folders()); // unread, it only makes names be told twice
        return owner && *owner ? (*owner)->owed : std::vector<std::string>{};
    }
    ActivityLog log;
    (void)RemovePreviousLevel(session, -1, log);
    return {};
}

/// A swap that was interrupted and cannot be mended now goes on as a full restore, provided that it
/// belongs to this folder: an archive that is away is not waited for, and neither is a full disk.
bool TakeOver(const Folders& folders, SwapJournal& journal)
{
    if (journal.phase == SwapPhase::Restore)
        return true;
    if (journal.phase == SwapPhase::Planned ||
        !HasMark(folders.trle, journal.folder).ValueOr(false))
        return false; // a store waits to be put back, or another folder
    const LevelPlace level = LevelOfNeededStore(folders, journal);
    journal.from = journal.liveIsKept || journal.storeLetGo ? -1 : level.code;
    journal.fromStore = StateStoreOf(folders, level).native();
    journal.phase = SwapPhase::Restore;
    journal.remove.insert(journal.remove.end(), journal.install.begin(), journal.install.end());
    return true;
}

/// What waits is mended first. Savegames whose archive is away go to the history.
void MendFirst(Session& session)
{
    const auto lacking = WhatMendingLacks(session.Folders(), session.archive);
    if (lacking && *lacking && (*lacking)->place == Place::Archive)
        (void)RecoverInterruptedWork(session, {{}, {}, true});
}

/// The journal of the restore: what the level brought, and whose savegames stand in the folder.
Result<SwapJournal> PlannedRestore(const Folders& folders, const Archive& archive)
{
    SwapJournal journal;
    auto folder = MarkOf(folders.trle);
    if (!folder)
        return folder.Error();
    journal.folder = std::move(*folder);
    journal.phase = SwapPhase::Restore;
    const auto known = ReadOwner(folders);
    if (!known) // it alone knows what the level brought
        return known.Error();
    const auto& owner = *known;
    const auto standing = LookAtStanding(folders, archive);
    if (!standing)
        return standing.Error();
    journal.from = standing->state.code;
    journal.fromStore = StateStoreOf(folders, standing->state).native();
    if (owner) {
        journal.from = owner->owner.value_or(-1); // -1: the state in the folder is nobody's
        journal.strangers = owner->strangers;
    }
    const auto marker = ReadWholeFile(folders.Marker());
    Belongings belongings = BelongingsOf(ParseMarker(marker ? *marker : std::string{}), owner);
    journal.remove = std::move(belongings.added);
    journal.restore = std::move(belongings.overwritten);
    return journal;
}

/// True when what leaves the Level Editor's folder makes room for what could not be noted.
bool WouldMakeRoom(const Folders& folders, const Failure& failure)
{
    return failure.code == ErrorCode::NoSpace &&
           platform::FactsOf(ResolvePath(folders.trle)).device ==
               platform::FactsOf(ResolvePath(folders.program)).device;
}

/// The restore noted down. On a full disk what the level brought goes first and makes room.
bool Begin(Host& host, const Folders& folders, const PreferencesRecord& preferences,
           const SwapJournal& journal)
{
    auto status = WriteJournal(folders, journal);
    if (!status && WouldMakeRoom(folders, status.Error())) {
        RestoreReport unused; // what is not deleted now is tried once more
        (void)DeleteListed(preferences, folders, journal.remove, unused);
        status = WriteJournal(folders, journal);
    }
    if (!status)
        TellFailure(host, GetMsg(Msg::CannotWriteJournal), status.Error());
    return bool{status};
}

/// The folders that only a full backup has, when the person wants them.
void RestoreOtherFolders(Host& host, Machine& machine, const Folders& folders,
                         const PreferencesRecord& preferences, ProgressScope& progress,
                         RestoreReport& report)
{
    if (!preferences.fullBackup || !host.AskYesNo(GetMsg(Msg::AskRestoreFolders)))
        return;
    for (const std::string& folder : Split(OnDisk::RestoreFolders, '|')) {
        progress.SetLabel(GetMsg(Msg::RestoringFolder) + folder);
        RestoreReport ofFolder;
        const auto status = RestoreFolder(machine, folders, InFolder({}, folder).relative_path(),
                                          ofFolder, &progress);
        if (!status || !ofFolder.Whole())
            host.Tell(Tone::Error, GetMsg(Msg::ErrorRestoringFolder) + folder,
                      status ? ofFolder.reason : status.Error().reason);
        report.missing.insert(report.missing.end(), ofFolder.missing.begin(),
                              ofFolder.missing.end());
        report.left.insert(report.left.end(), ofFolder.left.begin(), ofFolder.left.end());
        report.kept.insert(report.kept.end(), ofFolder.kept.begin(), ofFolder.kept.end());
        if (report.reason.empty())
            report.reason = ofFolder.reason;
    }
}

/// True unless the backup is of another folder and the person does not want its files here.
bool MayRestoreFrom(Host& host, const Folders& folders)
{
    const auto other = BackupSeemsOfAnother(folders);
    if (!other)
        return TellFolderNotRead(host, other.Error());
    return !*other || host.AskYesNo(GetMsg(Msg::AskRestoreFromOther,
                                           {TextOf(**other), TextOf(folders.trle), lineBreak}));
}

} // namespace

bool RestoreOriginalConfiguration(Session& session, ProgressScope& progress)
{
    const Operation running{session};
    const auto backup = LookAtBackup(session.Folders());
    if (!backup)
        return TellFolderNotRead(session.host, backup.Error());
    if (*backup == BackupState::Missing)
        return Refuse(session.host,
                      GetMsg(Msg::NoBackupToRestore, {TextOf(session.Folders().Marker())}));
    if (!FolderExists(session.TrleFolder()))
        return Refuse(session.host, GetMsg(Msg::RestoreFolderGone, {TextOf(session.TrleFolder())}));
    if (!MayRestoreFrom(session.host, session.Folders()) ||
        !MayChangeTrle(session, session.Folders()))
        return false;
    progress.SetLabel(GetMsg(Msg::RestoreRemovingLevel));
    progress.Step();
    MendFirst(session);
    const std::vector<std::string> told = RemoveLevelFirst(session);
    auto found = ReadJournal(session.Folders());
    if (!found) {
        TellFailure(session.host, GetMsg(Msg::RestoreNotFinished), found.Error());
        return false;
    }
    const auto planned =
        *found ? Result<SwapJournal>{**found} : PlannedRestore(session.Folders(), session.archive);
    if (!planned) {
        TellFailure(session.host, GetMsg(Msg::RestoreNotFinished), planned.Error());
        return false;
    }
    SwapJournal journal = *planned;
    if (!TakeOver(session.Folders(), journal))
        return Refuse(session.host, GetMsg(Msg::WorkPending));
    if (!Begin(session.host, session.Folders(), session.preferences, journal))
        return false;
    RestoreReport report;
    if (const auto status = FinishRestore(session, session.Folders(), journal, report, &progress);
        !status) {
        TellKept(session.host, report);
        TellIncompleteRestore(session.host, report, told);
        TellFailure(session.host, GetMsg(Msg::RestoreNotFinished), status.Error());
        return false;
    }
    RestoreOtherFolders(session.host, session.machine, session.Folders(), session.preferences,
                        progress, report);
    TellKept(session.host, report);
    progress.SetLabel(GetMsg(Msg::RestoreFinished));
    session.list.Refresh();
    if (report.Whole())
        session.host.Tell(Tone::Plain, GetMsg(Msg::RestoredOriginal));
    else
        TellIncompleteRestore(session.host, report, told);
    return report.Whole();
}

bool RestoreFastWithWords(Session& session)
{
    const Operation running{session};
    if (!MayChangeTrle(session, session.Folders()))
        return false;
    const bool done = RestoreFast(session);
    session.host.Tell(done ? Tone::Plain : Tone::Error,
                      GetMsg(done ? Msg::FastRestoreDone : Msg::FastRestoreFailed));
    return done;
}

} // namespace kestrova
