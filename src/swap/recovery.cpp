#include "swap/recovery.h"

#include "archive/level_folders.h"
#include "catalogue/message.h"
#include "core/staged_file.h"
#include "swap/backup_folders.h"
#include "swap/folder_guard.h"
#include "swap/history.h"
#include "swap/restore_steps.h"
#include "swap/state_change.h"
#include "swap/state_files.h"
#include "swap/swap_notes.h"
#include "swap/swap_run.h"

#include <algorithm>

namespace kestrova
{

namespace
{

bool IsSoundOfCompactBackup(const Session& session, const std::string& name)
{
    const std::string_view audio = RowText(Msg::FragAudio);
    return !session.preferences.fullBackup &&
           EqualNames(std::string_view{name}.substr(0, audio.size()), audio);
}

void ClearLeftovers(const Session& session)
{
    const Path trle = session.TrleFolder();
    for (const Msg fragment : {Msg::FragRoot, Msg::DirData, Msg::DirAudio})
        ClearStagedLeftovers(ResolvePath(InFolder(trle, RowText(fragment))));
    const Path ready = InFolder(trle, RowText(Msg::DirReady));
    if (FolderExists(ready))
        (void)RemoveTree(ready); // unlisted; the next swap tries again
}

/// Deletes what the old or the new level brought, but for files that are original or that somebody
/// changed since. `kept` gets the names of the latter.
Status DeleteBrought(Session& session, const std::vector<OwnedFile>& files,
                     std::vector<OwnedFile>& kept)
{
    for (const OwnedFile& file : files) {
        const auto relative = SafeRelative(file.name);
        if (!relative || IsPlayersFile(relative->filename().native()))
            continue;
        const Path place = ResolvePath(session.TrleFolder() / *relative);
        const platform::FileFacts facts = platform::FactsOf(place);
        if (facts.kind != platform::FileKind::File || IsSoundOfCompactBackup(session, file.name) ||
            SameContent(place, session.BackupFolder() / *relative))
            continue;
        // The old and the new level may both have brought a name; either's file goes.
        const bool listed = std::any_of(files.begin(), files.end(), [&](const OwnedFile& other) {
            return EqualNames(other.name, file.name) &&
                   (IsAsListed(other, facts) || (other.size == 0 && other.modifiedNs == 0));
        });
        if (!listed)
            kept.push_back(file);
        else if (auto status = DeleteFile(place); !status)
            return status;
    }
    return {};
}

/// Whatever the root and `data` of the backup hold and the folder lacks comes back.
Status RestoreMissing(Session& session, const SwapJournal& journal)
{
    const auto restore = [&](const Path& relative) -> Status {
        const bool wanted = !IsPlayersFile(relative.filename().native()) &&
                            FileExists(session.BackupFolder() / relative) &&
                            !FileExists(session.TrleFolder() / relative);
        return wanted ? RestoreOriginal(session, relative) : Status{};
    };
    for (const Path& folder : {Path{}, Path{InFolder({}, RowText(Msg::DirData))}.relative_path()})
        for (const Path& file : ListFiles(session.BackupFolder() / folder, RowText(Msg::PatAll)))
            if (auto status = restore(folder / file.filename()); !status)
                return status;
    std::vector<std::string> names = journal.restore;
    for (const auto* list : {&journal.remove, &journal.install})
        for (const OwnedFile& file : *list)
            names.push_back(file.name);
    for (const std::string& name : names)
        if (const auto relative = SafeRelative(name))
            if (auto status = restore(*relative); !status)
                return status;
    return {};
}

/// The live state leaves the folder: into its store, or, when the level has been removed since,
/// into the history.
Status SaveLiveState(Session& session, LevelCode owner, const Path& store)
{
    std::vector<StateFile> live;
    if (FolderExists(store.parent_path())) {
        if (auto status = StoreLiveState(session, owner, store, live); !status)
            return status;
    } else {
        const std::vector<Path> files = StateFilesIn(session.TrleFolder());
        auto hashes = HashesOf(files);
        if (!hashes)
            return hashes.Error();
        live = std::move(*hashes);
        if (auto status = KeepInHistory(session, owner, files, GetMsg(Msg::ReasonInterrupted));
            !status)
            return status;
    }
    return DropLiveState(session, owner, live);
}

/// Everything behind the point where the live state was stored ends at the original configuration.
/// Each step may be repeated.
Status ReturnToOriginal(Session& session, SwapJournal journal, std::vector<OwnedFile>& kept)
{
    const bool coming = journal.phase == SwapPhase::Coming && journal.to >= 0;
    const LevelCode owner = coming ? journal.to : journal.from;
    const Path store = coming ? journal.toStore : journal.fromStore;
    if (auto status = SettleTwins(session, owner, session.TrleFolder()); !status)
        return status;
    if (journal.liveIsKept) // the state of a level that has no folder any more
        if (auto status = DropLiveState(session, journal.from, journal.live); !status)
            return status;
    if (auto status = SaveLiveState(session, owner, store); !status)
        return status;
    ClearLeftovers(session);
    std::vector<OwnedFile> brought = journal.install;
    brought.insert(brought.end(), journal.remove.begin(), journal.remove.end());
    if (auto status = DeleteBrought(session, brought, kept); !status)
        return status;
    if (auto status = RestoreMissing(session, journal); !status)
        return status;
    if (auto status = DeleteFile(session.MarkerPath()); !status)
        return status;
    // From here on the state in the folder is that of the original configuration.
    journal.phase = SwapPhase::Coming;
    journal.to = originalCode;
    journal.toStore = StateStoreOf(session, originalCode).native();
    journal.liveIsKept = false;
    if (auto status = WriteJournal(session, journal); !status)
        return status;
    if (auto status = SettleTwins(session, originalCode, journal.toStore); !status)
        return status;
    std::vector<std::string> failed;
    std::vector<std::string> replaced;
    BringStateIn(session, originalCode, originalCode, nullptr, replaced, failed);
    if (!failed.empty()) // they are in their store, and no reason to wait for ever
        session.host.Tell(Tone::Warning, GetMsg(Msg::StateNotIn, {Join(failed, ", ")}));
    OwnerRecord record;
    record.owner = originalCode;
    record.overwritten = std::move(replaced);
    if (auto status = WriteOwner(session, std::move(record)); !status)
        return status;
    return DropJournal(session);
}

bool Unfinished(Session& session, const Failure& failure)
{
    TellFailure(session, GetMsg(Msg::InterruptedFailed), failure);
    return false;
}

/// A level's folder may be on a drive that is away now: its root is missing then too. Where the
/// root stands, a missing level has been removed.
bool StoresAreThere(Session& session, const SwapJournal& journal)
{
    const Path store = journal.phase == SwapPhase::Coming ? journal.toStore : journal.fromStore;
    const Path root = store.parent_path().parent_path();
    if (journal.phase == SwapPhase::Restore || FolderExists(root))
        return true;
    session.host.Tell(Tone::Error, GetMsg(Msg::InterruptedStoreGone, {TextOf(root)}));
    return false;
}

bool MendSwap(Session& session, const SwapJournal& journal)
{
    if (journal.phase == SwapPhase::Restore) {
        auto status = FinishRestore(session, journal);
        if (!status)
            return Unfinished(session, status.Error());
        session.host.Tell(Tone::Warning, GetMsg(Msg::InterruptedRestore));
        return true;
    }
    if (!StoresAreThere(session, journal))
        return false;
    if (journal.phase == SwapPhase::Planned) {
        auto status = PutStoreBack(session, journal.from, journal.fromStore, journal.store);
        if (status)
            status = DropJournal(session);
        if (!status)
            return Unfinished(session, status.Error());
        ClearLeftovers(session);
        session.host.Tell(Tone::Warning, GetMsg(Msg::InterruptedBefore));
        return true;
    }
    std::vector<OwnedFile> kept;
    if (const auto status = ReturnToOriginal(session, journal, kept); !status)
        return Unfinished(session, status.Error());
    session.host.Tell(Tone::Warning, GetMsg(Msg::InterruptedSwap));
    if (!kept.empty()) {
        std::vector<std::string> names;
        for (const OwnedFile& file : kept)
            names.push_back(Readable(file.name));
        session.host.Tell(Tone::Warning, GetMsg(Msg::KeptUnlisted, {Join(names, ", ")}));
    }
    return true;
}

/// A journal that nobody can read must not stop the program for ever, nor be lost.
bool SetAsideDamaged(Session& session)
{
    const Path file = JournalPath(session);
    Path aside;
    for (int number = 1; aside.empty() || FileExists(aside); ++number)
        aside = file.native() + "." + std::to_string(number);
    if (const auto failure = platform::Rename(file, aside))
        return Unfinished(session, MakeFailure(ErrorCode::CannotWrite, TextOf(file), failure));
    session.host.Tell(Tone::Error, GetMsg(Msg::InterruptedDamaged, {TextOf(aside)}));
    return true;
}

/// A change of savegames is finished before a swap moves them.
bool FinishSavegames(Session& session)
{
    if (!StateChangeWaits(session))
        return true;
    const Operation running{session};
    if (const auto status = FinishStateChange(session); !status) {
        TellFailure(session, GetMsg(Msg::SavegamesUnfinished), status.Error());
        return false;
    }
    session.host.Tell(Tone::Warning, GetMsg(Msg::SavegamesFinished));
    return true;
}

/// Without a marker the folder is original; what a told failure left in it is cleared as soon as
/// the disk allows it.
void ClearToldLeftovers(Session& session)
{
    const auto owner = OwnerThatCounts(session);
    if (!owner || FileExists(session.MarkerPath()) ||
        (owner->overwritten.empty() && owner->added.empty()) || !ProgramsInTrle(session).empty())
        return;
    SwapJournal lists;
    lists.restore = owner->overwritten;
    std::vector<OwnedFile> kept;
    OwnerRecord left = *owner;
    if (!DeleteBrought(session, owner->added, kept) || !RestoreMissing(session, lists))
        return; // told when it happened; the next swap tries again
    left.overwritten.clear();
    std::erase_if(left.added, [&](const OwnedFile& file) {
        const auto relative = SafeRelative(file.name);
        return !relative || !FileExists(session.TrleFolder() / *relative);
    });
    if (left.added.size() != owner->added.size() || !owner->overwritten.empty())
        (void)WriteOwner(session, std::move(left)); // otherwise it is looked at once more
}

} // namespace

bool RecoverInterruptedWork(Session& session)
{
    if (!SettleBackupFolders(session) || !FinishSavegames(session))
        return false;
    const auto found = ReadJournal(session);
    if (!found)
        return found.Error().code == ErrorCode::Damaged ? SetAsideDamaged(session)
                                                        : Unfinished(session, found.Error());
    if (!*found) {
        ClearToldLeftovers(session);
        return true;
    }
    const SwapJournal& journal = **found;
    const Operation running{session};
    const platform::FileFacts folder = platform::FactsOf(journal.folder.path);
    if (folder.kind != platform::FileKind::Folder) {
        session.host.Tell(Tone::Error,
                          GetMsg(Msg::InterruptedFolderGone, {Readable(journal.folder.path)}));
        return false;
    }
    // The preferences may name another folder by now; the work is mended where it began.
    std::string chosen = journal.folder.path;
    std::swap(chosen, session.preferences.trlePath);
    const bool mended = MayChangeTrle(session) && MendSwap(session, journal);
    std::swap(chosen, session.preferences.trlePath);
    return mended;
}

std::string InterruptedWork(const Session& session)
{
    if (FileExists(JournalPath(session)))
        return GetMsg(Msg::WaitingSwap);
    if (StateChangeWaits(session))
        return GetMsg(Msg::WaitingSavegames);
    return BackupFoldersWait(session) ? GetMsg(Msg::WaitingBackup) : std::string{};
}

} // namespace kestrova
