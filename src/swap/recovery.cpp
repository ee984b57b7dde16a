#include "swap/recovery.h"

#include "archive/level_folders.h"
#include "catalogue/message.h"
#include "core/look.h"
#include "core/removal.h"
#include "core/staged_file.h"
#include "session/name_list.h"
#include "swap/backup_folders.h"
#include "swap/folder_guard.h"
#include "swap/history.h"
#include "swap/owned_files.h"
#include "swap/restore_steps.h"
#include "swap/state_change.h"
#include "swap/state_files.h"
#include "swap/swap_notes.h"
#include "swap/swap_run.h"
#include "swap/vault.h"

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
    (void)ClearPlace(InFolder(trle, RowText(Msg::DirReady))); // the next swap tries again
}

/// What mending had to leave, each noted so that the next start tries it again.
struct Leftovers {
    std::vector<std::string> kept;        ///< of somebody's own making, in the vault now
    std::vector<std::string> spared;      ///< could not be kept, so they stand where they are
    std::vector<OwnedFile> added;         ///< could not be deleted
    std::vector<std::string> overwritten; ///< could not be brought back
    std::vector<OwnedFile> strangers;
};

/// Deletes what the old or the new level brought, but for files that are original. What somebody
/// changed since is kept first.
void DeleteBrought(Session& session, const std::vector<OwnedFile>& files, const LevelPlace& level,
                   Leftovers& left)
{
    const OwnedNames brought{files}; // the old and the new level may both have brought a name
    std::vector<std::pair<Path, OwnedFile>> going;
    std::vector<Path> unsafe;
    {
        SafeContents safe{session, level};
        for (const OwnedFile& file : files) {
            const auto relative = SafeRelative(file.name);
            if (!relative || IsPlayersPlace(*relative))
                continue;
            const Path place = ResolvePath(session.TrleFolder() / *relative);
            const auto facts = LookAt(place);
            if (!facts) { // it stays noted
                left.added.push_back(file);
                continue;
            }
            if (facts->kind != platform::FileKind::File ||
                IsSoundOfCompactBackup(session, file.name) ||
                SameContent(place, session.BackupFolder() / *relative))
                continue;
            going.emplace_back(*relative, file);
            if (!brought.IsAsPut(file.name, *facts) && !safe.Holds(file, *relative))
                unsafe.push_back(*relative);
        }
    }
    const Keeping keeping = KeepOriginals(session, unsafe);
    for (const Path& relative : keeping.kept)
        left.kept.push_back(Readable(ToBackslashes(relative)));
    for (const Path& relative : keeping.failed)
        left.spared.push_back(Readable(ToBackslashes(relative)));
    for (const auto& [relative, file] : going) {
        const bool spared = std::find(keeping.failed.begin(), keeping.failed.end(), relative) !=
                            keeping.failed.end();
        if (spared || !DeleteFile(session.TrleFolder() / relative))
            left.added.push_back(file);
    }
}

/// Whatever the root and `data` of the backup hold and the folder lacks comes back. Fails before it
/// changes anything when the backup cannot be listed.
Status RestoreMissing(Session& session, const SwapJournal& journal, Leftovers& left)
{
    const auto restore = [&](const Path& relative) {
        if (IsPlayersPlace(relative))
            return;
        const auto isOriginal = IsFile(session.BackupFolder() / relative);
        const auto isThere = IsFile(session.TrleFolder() / relative);
        // Where one of both cannot be told it waits.
        const bool wanted = isOriginal && isThere && *isOriginal && !*isThere;
        if (!isOriginal || !isThere || (wanted && !RestoreOriginal(session, relative)))
            left.overwritten.push_back(ToBackslashes(relative));
    };
    std::vector<Path> originals;
    for (const Path& folder : {Path{}, Path{InFolder({}, RowText(Msg::DirData))}.relative_path()}) {
        const auto files = ListFiles(session.BackupFolder() / folder, RowText(Msg::PatAll));
        if (!files)
            return files.Error();
        for (const Path& file : *files)
            originals.push_back(folder / file.filename());
    }
    for (const Path& file : originals)
        restore(file);
    std::vector<std::string> names = journal.restore;
    for (const auto* list : {&journal.remove, &journal.install})
        for (const OwnedFile& file : *list)
            names.push_back(file.name);
    for (const std::string& name : names)
        if (const auto relative = SafeRelative(name))
            restore(*relative);
    // Where a file could not be deleted its original waits too.
    for (const OwnedFile& file : left.added)
        if (const auto relative = SafeRelative(file.name);
            relative && IsFile(session.BackupFolder() / *relative).ValueOr(true))
            left.overwritten.push_back(file.name);
    return {};
}

/// The live state leaves the folder: into its store, or, when the level has been removed since,
/// into the history.
Status SaveLiveState(Session& session, const LevelPlace& owner, const Path& store,
                     std::vector<OwnedFile>& strangers)
{
    std::vector<StateFile> live;
    const auto there = StrangersThere(session, strangers);
    const auto hasHome = IsFolder(store.parent_path());
    if (!there || !hasHome)
        return there ? hasHome.Error() : there.Error();
    strangers = *there;
    if (*hasHome) {
        if (auto status = StoreLiveState(session, owner, store, live, strangers); !status)
            return status;
    } else {
        const auto files = LiveStateFiles(session, strangers);
        if (!files)
            return files.Error();
        auto hashes = HashesOf(*files);
        if (!hashes)
            return hashes.Error();
        live = std::move(*hashes);
        if (auto status = KeepInHistory(session, owner, *files, GetMsg(Msg::ReasonInterrupted));
            !status)
            return status;
    }
    strangers.clear();
    return DropLiveState(session, owner, live, strangers);
}

void TellLeftovers(Session& session, const Leftovers& left)
{
    const auto tell = [&](Msg words, const std::vector<std::string>& names) {
        if (!names.empty())
            session.host.Tell(Tone::Warning, GetMsg(words, {ShownNames(names)}));
    };
    const auto namesOf = [](const std::vector<OwnedFile>& files) {
        std::vector<std::string> names;
        for (const OwnedFile& file : files)
            names.push_back(Readable(file.name));
        return names;
    };
    tell(Msg::FilesKept, left.kept);
    tell(Msg::KeptUnlisted, left.spared);
    tell(Msg::LeftBehind, namesOf(left.added));
    tell(Msg::OriginalsNotBack, left.overwritten);
    tell(Msg::StateLeft, namesOf(left.strangers));
}

/// Everything behind the point where the live state was stored ends at the original configuration.
/// Each step may be repeated.
Status ReturnToOriginal(Session& session, SwapJournal journal, Leftovers& left)
{
    const Path store = NeededStore(session, journal);
    const LevelPlace owner = LevelOfNeededStore(session, journal);
    if (auto status = SettleTwins(session, owner, session.TrleFolder()); !status)
        return status;
    left.strangers = journal.strangers;
    if (journal.liveIsKept) { // the state of a level that has no folder any more
        const LevelPlace gone{journal.from, Path{journal.fromStore}.parent_path()};
        std::vector<OwnedFile> there;
        if (auto status = DropLiveState(session, gone, journal.live, there); !status)
            return status;
    }
    if (auto status = SaveLiveState(session, owner, store, left.strangers); !status)
        return status;
    ClearLeftovers(session);
    std::vector<OwnedFile> brought = journal.install;
    brought.insert(brought.end(), journal.remove.begin(), journal.remove.end());
    const LevelPlace old{journal.from, Path{journal.fromStore}.parent_path()};
    DeleteBrought(session, brought, old, left);
    if (auto status = RestoreMissing(session, journal, left); !status)
        return status;
    (void)DeleteFile(session.MarkerPath()); // the owner record outweighs one that stays
    // From here on the state in the folder is that of the original configuration.
    journal.phase = SwapPhase::Coming;
    journal.to = originalCode;
    journal.toStore = StateStoreOf(session, originalCode).native();
    journal.liveIsKept = false;
    journal.strangers = left.strangers;
    if (auto status = WriteJournal(session, journal); !status)
        return status;
    if (auto status = SettleTwins(session, originalCode, journal.toStore); !status)
        return status;
    const auto stored = StoredState(session, originalCode);
    if (!stored)
        return stored.Error();
    BroughtState state = BringStateIn(session, journal.toStore, *stored, originalCode, nullptr);
    if (!state.waiting.empty()) // they are in their store, and no reason to wait for ever
        session.host.Tell(Tone::Warning, GetMsg(Msg::StateNotIn, {ShownNames(state.waiting)}));
    OwnerRecord record;
    SetOwner(session, record, originalCode);
    record.overwritten = std::move(state.replaced);
    record.overwritten.insert(record.overwritten.end(), left.overwritten.begin(),
                              left.overwritten.end());
    record.added = left.added;
    record.strangers = StrangersThere(session, left.strangers).ValueOr(left.strangers);
    record.waiting = std::move(state.waiting);
    if (auto status = WriteOwner(session, std::move(record)); !status)
        return status;
    return DropJournal(session);
}

bool Unfinished(Session& session, const Failure& failure)
{
    TellFailure(session, GetMsg(Msg::InterruptedFailed), failure);
    return false;
}

void TellLacking(Session& session, const LackingFolder& lacking)
{
    const Msg text =
        lacking.place == Place::LevelEditor
            ? (lacking.anotherIsThere ? Msg::InterruptedFolderOther : Msg::InterruptedFolderGone)
            : (lacking.anotherIsThere ? Msg::InterruptedStoreOther : Msg::InterruptedStoreGone);
    session.host.Tell(Tone::Error, GetMsg(text, {TextOf(lacking.noted)}));
}

/// What a swap took out of a store comes back there, as far as nothing newer stands in its place.
Status RefillStore(const Session& session, const SwapJournal& journal)
{
    const Path store = ResolvePath(NeededStore(session, journal));
    const auto isThere = IsFolder(store);
    if (!isThere)
        return isThere.Error();
    if (journal.phase != SwapPhase::Planned || !*isThere)
        return {};
    for (const StateFile& file : journal.store) {
        if (!SafeName(file.name))
            continue;
        const Path content = HistoryContent(session, file.hash);
        const auto isKept = IsFile(content);
        const auto isFree = IsFree(store / file.name);
        if (!isKept || !isFree)
            return isKept ? isFree.Error() : isKept.Error();
        if (!*isKept || !*isFree)
            continue;
        if (auto status =
                CopyFileOver(content, store / file.name, {Verify::Content, true, true, {}});
            !status)
            return status;
    }
    return {};
}

/// The Level Editor's folder is gone for good.
bool GiveUpFolder(Session& session, const SwapJournal& journal)
{
    auto status = RefillStore(session, journal);
    if (status)
        status = DropJournal(session);
    if (!status)
        return Unfinished(session, status.Error());
    session.host.Tell(Tone::Warning, GetMsg(Msg::LetGoFolder, {Readable(journal.folder.path)}));
    return true;
}

bool MendSwap(Session& session, const SwapJournal& journal)
{
    if (journal.phase == SwapPhase::Restore) {
        RestoreReport report;
        const auto status = FinishRestore(session, journal, report);
        TellIncompleteRestore(session, report);
        if (!status) {
            TellFailure(session, GetMsg(Msg::RestoreNotFinished), status.Error());
            return false;
        }
        if (report.Whole())
            session.host.Tell(Tone::Warning, GetMsg(Msg::InterruptedRestore));
        return true;
    }
    if (journal.phase == SwapPhase::Planned) {
        auto status = PutStoreBack(session, LevelOfNeededStore(session, journal),
                                   NeededStore(session, journal), journal.store);
        if (status)
            status = DropJournal(session);
        if (!status)
            return Unfinished(session, status.Error());
        ClearLeftovers(session);
        session.host.Tell(Tone::Warning, GetMsg(Msg::InterruptedBefore));
        return true;
    }
    Leftovers left;
    if (const auto status = ReturnToOriginal(session, journal, left); !status)
        return Unfinished(session, status.Error());
    session.host.Tell(Tone::Warning, GetMsg(Msg::InterruptedSwap));
    TellLeftovers(session, left);
    return true;
}

/// A journal that nobody can read must not stop the program for ever, nor be lost.
bool SetAsideDamaged(Session& session)
{
    const Path file = JournalPath(session);
    const auto aside = FreeNumbered(file);
    if (!aside)
        return Unfinished(session, aside.Error());
    if (const auto failure = platform::Rename(file, *aside))
        return Unfinished(session, MakeFailure(ErrorCode::CannotWrite, TextOf(file), failure));
    session.host.Tell(Tone::Error, GetMsg(Msg::InterruptedDamaged, {TextOf(*aside)}));
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
    const auto found = ReadOwner(session); // the next occasion may be able to
    const auto& owner = found ? *found : std::optional<OwnerRecord>{};
    if (!owner || !IsFree(session.MarkerPath()).ValueOr(false) ||
        (owner->overwritten.empty() && owner->added.empty()) || !ProgramsInTrle(session).empty())
        return;
    SwapJournal lists;
    lists.restore = owner->overwritten;
    lists.remove = owner->added;
    Leftovers left;
    DeleteBrought(session, owner->added, originalCode, left); // told already; only what is kept is
    const auto restored = RestoreMissing(session, lists, left); // new
    if (!left.kept.empty())
        session.host.Tell(Tone::Warning, GetMsg(Msg::FilesKept, {ShownNames(left.kept)}));
    if (!restored)
        return; // nothing is known of what waits; the next occasion tries again
    OwnerRecord now = *owner;
    now.overwritten = std::move(left.overwritten);
    std::erase_if(now.added, [&](const OwnedFile& file) {
        const auto relative = SafeRelative(file.name);
        return !relative || !IsFile(session.TrleFolder() / *relative).ValueOr(true);
    });
    if (now.added.size() != owner->added.size() || now.overwritten != owner->overwritten)
        (void)WriteOwner(session, std::move(now)); // otherwise it is looked at once more
}

} // namespace

bool RecoverInterruptedWork(Session& session, const Whereabouts& said)
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
    SwapJournal journal = **found;
    const Operation running{session};
    if (!FollowMovedFolders(session, journal, said))
        return false;
    const auto lacking = LackingOf(session, journal);
    if (!lacking)
        return Unfinished(session, lacking.Error());
    if (*lacking) {
        if (said.letGo && (*lacking)->place == Place::LevelEditor)
            return GiveUpFolder(session, journal);
        TellLacking(session, **lacking);
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
    if (const auto lacking = WhatMendingLacks(session); lacking && *lacking)
        return GetMsg((*lacking)->place == Place::LevelEditor ? Msg::WaitingSwapFolder
                                                              : Msg::WaitingSwapStore,
                      {TextOf((*lacking)->noted)});
    if (!IsFree(JournalPath(session)).ValueOr(false)) // nor is one that cannot be looked at none
        return GetMsg(Msg::WaitingSwap);
    if (StateChangeWaits(session))
        return GetMsg(Msg::WaitingSavegames);
    return BackupFoldersWait(session) ? GetMsg(Msg::WaitingBackup) : std::string{};
}

} // namespace kestrova
