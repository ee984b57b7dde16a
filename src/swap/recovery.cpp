#include "swap/recovery.h"

#include "archive/level_folders.h"
#include "catalogue/message.h"
#include "core/staged_file.h"
#include "swap/backup_folders.h"
#include "swap/restore_steps.h"
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
        const bool listed = IsAsListed(file, facts) || (file.size == 0 && file.modifiedNs == 0);
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
        const bool wanted = FileExists(session.BackupFolder() / relative) &&
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

/// Everything behind the point where the live state was stored ends at the original configuration.
/// Each step may be repeated.
Status ReturnToOriginal(Session& session, SwapJournal journal, std::vector<OwnedFile>& kept)
{
    const bool coming = journal.phase == SwapPhase::Coming;
    if (auto status =
            ReturnLiveState(session, coming && journal.to >= 0 ? journal.to : journal.from);
        !status)
        return status;
    ClearLeftovers(session);
    for (const auto* list : {&journal.remove, &journal.install})
        if (auto status = DeleteBrought(session, *list, kept); !status)
            return status;
    if (auto status = RestoreMissing(session, journal); !status)
        return status;
    if (auto status = DeleteFile(session.MarkerPath()); !status)
        return status;
    // From here on the state in the folder is that of the original configuration.
    journal.phase = SwapPhase::Coming;
    journal.to = originalCode;
    if (auto status = WriteJournal(session, journal); !status)
        return status;
    std::vector<std::string> failed;
    BringStateIn(session, originalCode, originalCode, nullptr, failed);
    if (!failed.empty())
        return Failure{ErrorCode::CannotWrite, Join(failed, ", "), {}};
    OwnerRecord owner;
    owner.owner = originalCode;
    if (auto status = WriteOwner(session, std::move(owner)); !status)
        return status;
    return DropJournal(session);
}

bool Unfinished(Session& session, const Failure& failure)
{
    TellFailure(session, GetMsg(Msg::InterruptedFailed), failure);
    return false;
}

/// The folder of the journal is another one now: only the stores can be settled.
bool SettleStores(Session& session, const SwapJournal& journal)
{
    Status status;
    if (journal.phase == SwapPhase::Planned)
        status = PutStoreBack(session, journal.from, journal.store);
    if (status)
        status = DropJournal(session);
    if (!status)
        return Unfinished(session, status.Error());
    session.host.Tell(Tone::Warning,
                      GetMsg(Msg::InterruptedFolderOther, {Readable(journal.folder.path)}));
    return true;
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
    if (journal.phase == SwapPhase::Planned) {
        auto status = PutStoreBack(session, journal.from, journal.store);
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

/// Without a marker the folder is original; what a told failure left in it is cleared as soon as
/// the disk allows it.
void ClearToldLeftovers(Session& session)
{
    const auto owner = OwnerThatCounts(session);
    if (!owner || FileExists(session.MarkerPath()) ||
        (owner->overwritten.empty() && owner->added.empty()))
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
    if (!SettleBackupFolders(session))
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
    if (folder.inode != journal.folder.inode)
        return SettleStores(session, journal);
    // The preferences may name another folder by now; the work is mended where it began.
    std::string chosen = journal.folder.path;
    std::swap(chosen, session.preferences.trlePath);
    const bool mended = MendSwap(session, journal);
    std::swap(chosen, session.preferences.trlePath);
    return mended;
}

std::string InterruptedWork(const Session& session)
{
    if (FileExists(JournalPath(session)))
        return GetMsg(Msg::WaitingSwap);
    return BackupFoldersWait(session) ? GetMsg(Msg::WaitingBackup) : std::string{};
}

} // namespace kestrova
