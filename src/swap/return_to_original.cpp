#include "swap/return_to_original.h"

#include "archive/level_folders.h"
#include "catalogue/message.h"
#include "core/look.h"
#include "core/removal.h"
#include "core/staged_file.h"
#include "session/name_list.h"
#include "swap/backup.h"
#include "swap/folder_guard.h"
#include "swap/history.h"
#include "swap/marker.h"
#include "swap/owned_files.h"
#include "swap/state_files.h"
#include "swap/swap_notes.h"
#include "swap/swap_run.h"
#include "swap/vault.h"
#include "swap/whereabouts.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// Deletes what the old or the new level brought, but for files that are original. What somebody
/// changed since is kept first.
void DeleteBrought(Session& session, const std::vector<OwnedFile>& files, const LevelPlace& level,
                   LeftInTrle& left)
{
    const bool away = BackupIsAway(session);
    const OwnedNames brought{files}; // the old and the new level may both have brought a name
    struct Going {
        Path relative;
        Path place; ///< exactly as it is spelled
        OwnedFile file;
    };
    std::vector<Going> going;
    std::vector<Path> unsafe;
    {
        SafeContents safe{session, level};
        for (const OwnedFile& file : files) {
            const auto name = SafeRelative(file.name);
            if (!name || IsPlayersPlace(*name))
                continue;
            const Path relative = SpelledAsPut(session, file, *name);
            const Path place = ResolvePath(session.TrleFolder() / relative);
            const auto facts = LookAt(place);
            if (!facts) { // it stays noted
                left.added.push_back(file);
                continue;
            }
            if (facts->kind != platform::FileKind::File ||
                StaysWithCompactBackup(session, file.name) ||
                SameContent(place, session.BackupFolder() / relative))
                continue;
            const bool known = brought.IsAsPut(file.name, *facts) || safe.Holds(file, relative);
            if (!known && away) {
                left.unsure.push_back(file);
                continue;
            }
            going.push_back({relative, place, file});
            if (!known)
                unsafe.push_back(relative);
        }
    }
    const Keeping keeping = KeepOriginals(session, unsafe);
    for (const Path& relative : keeping.kept)
        left.kept.push_back(Readable(ToBackslashes(relative)));
    for (const Path& relative : keeping.failed)
        left.spared.push_back(Readable(ToBackslashes(relative)));
    for (const auto& [relative, place, file] : going) {
        const bool spared = std::find(keeping.failed.begin(), keeping.failed.end(), relative) !=
                            keeping.failed.end();
        if (spared || !DeleteSpelled(place))
            left.added.push_back(file);
    }
}

/// Whatever the root and `data` of the backup hold and the folder lacks comes back. Fails before it
/// changes anything when the backup cannot be listed.
Status RestoreMissing(Session& session, const SwapJournal& journal, LeftInTrle& left)
{
    const bool away = BackupIsAway(session);
    NameSet owed;
    const auto restore = [&](const Path& relative) {
        if (IsPlayersPlace(relative))
            return;
        if (away) { // whatever is missing may be an original
            const std::string name = ToBackslashes(relative);
            if (!IsFile(session.TrleFolder() / relative).ValueOr(false) &&
                !StaysWithCompactBackup(session, name) && !owed.Has(name))
                left.overwritten.push_back(name);
            owed.Add(name);
            return;
        }
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
    if (away)
        return {};
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

} // namespace

void ClearHalfDone(const Session& session)
{
    const Path trle = session.TrleFolder();
    for (const Msg fragment : {Msg::FragRoot, Msg::DirData, Msg::DirAudio})
        ClearStagedLeftovers(ResolvePath(InFolder(trle, RowText(fragment))));
    (void)ClearPlace(InFolder(trle, RowText(Msg::DirReady))); // the next swap tries again
}

void TellLeftovers(Session& session, const LeftInTrle& left)
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
    if (!left.overwritten.empty() && BackupIsAway(session))
        session.host.Tell(Tone::Error,
                          GetMsg(Msg::OriginalsNoBackup,
                                 {TextOf(session.BackupFolder()), ShownNames(left.overwritten)}));
    else
        tell(Msg::OriginalsNotBack, left.overwritten);
    tell(Msg::StateLeft, namesOf(left.strangers));
}

Status ReturnToOriginal(Session& session, SwapJournal journal, LeftInTrle& left)
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
    ClearHalfDone(session);
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
    record.owed = left.overwritten;
    record.added = left.added;
    record.added.insert(record.added.end(), left.unsure.begin(), left.unsure.end());
    record.strangers = StrangersThere(session, left.strangers).ValueOr(left.strangers);
    record.waiting = std::move(state.waiting);
    if (auto status = WriteOwner(session, std::move(record)); !status)
        return status;
    return DropJournal(session);
}

namespace
{

bool IsOriginals(const Session& session, const LevelPlace& level)
{
    return level.code == originalCode &&
           HomeOf(session, level) == LevelHomeOf(session, originalCode);
}

/// The folder is the original configuration's, but for what a told failure left in it: at worst the
/// marker of the level that went.
bool IsOriginalButForLeftovers(const Session& session, const Standing& standing)
{
    return standing.owner && (IsOriginals(session, standing.level) ||
                              (standing.owner->owner && IsOriginals(session, standing.state)));
}

/// Whether the level's file still stands there, and not the original in its place.
bool Stays(const Session& session, const OwnedFile& file)
{
    const auto relative = SafeRelative(file.name);
    return relative && IsFile(session.TrleFolder() / *relative).ValueOr(true) &&
           !SameContent(session.TrleFolder() / *relative, session.BackupFolder() / *relative);
}

/// Those of them that are to go: the sounds of a compact backup stay.
bool ShouldGo(const Session& session, const OwnedFile& file)
{
    return Stays(session, file) && !StaysWithCompactBackup(session, file.name);
}

std::vector<std::string> ShownNamesOf(const std::vector<Path>& files)
{
    std::vector<std::string> names;
    for (const Path& file : files)
        names.push_back(Readable(file.filename().native()));
    return names;
}

/// The state of a level whose files are gone, and that should be in its store.
struct Homeless {
    LevelPlace level;
    std::vector<OwnedFile> strangers;
    std::vector<Path> live;
};

Result<std::optional<Homeless>> FindHomeless(const Session& session, const Standing& standing)
{
    if (!standing.owner || !standing.owner->owner || !IsOriginals(session, standing.level) ||
        IsOriginals(session, standing.state))
        return std::optional<Homeless>{};
    auto strangers = StrangersThere(session, standing.owner->strangers);
    if (!strangers)
        return strangers.Error();
    auto live = LiveStateFiles(session, *strangers);
    if (!live)
        return live.Error();
    return std::optional{Homeless{standing.state, std::move(*strangers), std::move(*live)}};
}

} // namespace

namespace
{

/// True when the place of an original is free, or what stands there is safe: an earlier level's, as
/// it was put there, or kept now.
bool MayGiveWay(Session& session, const OwnerRecord& owner, const std::string& name,
                LeftInTrle& left)
{
    const Path place = PlaceOfOriginal(session, *SafeRelative(name));
    const auto facts = LookAt(session.TrleFolder() / place);
    if (!facts)
        return false;
    if (facts->kind != platform::FileKind::File)
        return facts->kind == platform::FileKind::Missing;
    if (OwnedNames{owner.added}.IsAsPut(name, *facts))
        return true;
    const Keeping keeping = KeepOriginals(session, {place});
    for (const Path& kept : keeping.kept)
        left.kept.push_back(Readable(ToBackslashes(kept)));
    return keeping.failed.empty();
}

/// Originals that a level does not replace and that could not be brought back before it came in
/// come back beside it.
void BringOwed(Session& session, const Standing& standing)
{
    if (!standing.owner || standing.owner->owed.empty() || !ProgramsInTrle(session).empty() ||
        BackupIsAway(session))
        return;
    OwnerRecord now = *standing.owner;
    LeftInTrle left;
    const auto came = std::erase_if(now.owed, [&](const std::string& name) {
        const auto relative = SafeRelative(name);
        if (!relative || !IsFile(session.BackupFolder() / *relative).ValueOr(true))
            return true; // nothing that could ever come
        if (!MayGiveWay(session, *standing.owner, name, left) ||
            !RestoreOriginal(session, *relative))
            return false;
        std::erase_if(now.added,
                      [&](const OwnedFile& file) { return EqualNames(file.name, name); });
        std::erase(now.overwritten, name);
        return true;
    });
    if (came > 0)
        (void)WriteOwner(session, std::move(now)); // otherwise they are looked for once more
    TellLeftovers(session, left);
}

} // namespace

void ClearToldLeftovers(Session& session)
{
    const auto standing = LookAtStanding(session); // otherwise the next occasion may be able to
    if (standing && !IsOriginalButForLeftovers(session, *standing))
        BringOwed(session, *standing);
    if (!standing || !IsOriginalButForLeftovers(session, *standing) ||
        (standing->owner->overwritten.empty() && standing->owner->added.empty()) ||
        !ProgramsInTrle(session).empty() || BackupIsAway(session))
        return;
    const OwnerRecord& owner = *standing->owner;
    SwapJournal lists;
    lists.restore = owner.overwritten;
    lists.remove = owner.added;
    LeftInTrle left;
    DeleteBrought(session, owner.added, originalCode, left); // told already; only what is kept is
    const auto restored = RestoreMissing(session, lists, left); // new
    if (!left.kept.empty())
        session.host.Tell(Tone::Warning, GetMsg(Msg::FilesKept, {ShownNames(left.kept)}));
    if (!restored)
        return; // nothing is known of what waits; the next occasion tries again
    OwnerRecord now = owner;
    now.overwritten = std::move(left.overwritten);
    now.owed = now.overwritten;
    std::erase_if(now.added, [&](const OwnedFile& file) { return !Stays(session, file); });
    if (!IsOriginals(session, standing->level) &&
        std::none_of(now.added.begin(), now.added.end(),
                     [&](const OwnedFile& file) { return ShouldGo(session, file); }))
        (void)DeleteFile(
            session.MarkerPath()); // of a level that is gone; the next start tries again
    if (now.added.size() != owner.added.size() || now.overwritten != owner.overwritten ||
        !IsOriginals(session, standing->level))
        (void)WriteOwner(session, std::move(now)); // otherwise it is looked at once more
}

namespace
{

/// The level's folder where the person said that it is; no value, told, when it is not that one.
std::optional<LevelPlace> FollowSaidHome(Session& session, const LevelPlace& level,
                                         const OwnerRecord& owner, const Path& archiveFolder)
{
    const Path noted = HomeOf(session, level);
    const Path said = archiveFolder / noted.filename();
    const auto isNoted = HasMark(said, owner.home);
    if (!isNoted) {
        TellFailure(session, GetMsg(Msg::InterruptedFailed), isNoted.Error());
        return {};
    }
    if (!*isNoted && !Confirmed(session, said, noted))
        return {};
    return LevelPlace{level.code, said};
}

/// The state goes to its level's store, which is there, or to the history.
Status SendHome(Session& session, const Homeless& state, const OwnerRecord& owner, bool letGo)
{
    const LevelPlace& level = state.level;
    SwapJournal journal;
    journal.phase = SwapPhase::Stored;
    journal.from = level.code;
    journal.fromStore = StateStoreOf(session, level).native();
    journal.to = -1;
    journal.strangers = state.strangers;
    journal.remove = owner.added;
    journal.restore = owner.overwritten;
    journal.storeLetGo = letGo;
    auto folder = MarkOf(session.TrleFolder());
    auto root = letGo ? Result<FolderMark>{FolderMark{}} : MarkOf(RootOfStore(journal.fromStore));
    if (!folder || !root)
        return folder ? root.Error() : folder.Error();
    journal.folder = std::move(*folder);
    journal.fromRoot = std::move(*root);
    // First the copies alone: while they cannot be made nothing waits that would hold up a swap.
    auto status = SettleTwins(session, level, session.TrleFolder());
    if (status && !letGo)
        status = SettleTwins(session, level, ResolvePath(journal.fromStore));
    if (status && !letGo)
        status = StoreLiveState(session, level, journal.fromStore, journal.live, state.strangers);
    if (status && letGo)
        status = KeepInHistory(session, level, state.live, GetMsg(Msg::ReasonInterrupted));
    if (status)
        status = WriteJournal(session, journal);
    LeftInTrle left;
    if (status)
        status = ReturnToOriginal(session, std::move(journal), left);
    if (status)
        TellLeftovers(session, left);
    return status;
}

} // namespace

Status ReturnHomelessState(Session& session, std::vector<std::string>& stay,
                           const Whereabouts& said)
{
    const auto standing = LookAtStanding(session);
    if (!standing)
        return standing.Error();
    const auto found = FindHomeless(session, *standing);
    if (!found)
        return found.Error();
    if (!*found)
        return {};
    Homeless state = **found;
    const OwnerRecord& owner = *standing->owner;
    auto hasHome = IsFolder(HomeOf(session, state.level));
    if (hasHome && !*hasHome && !said.archiveFolder.empty()) {
        const auto followed = FollowSaidHome(session, state.level, owner, said.archiveFolder);
        if (!followed)
            return {};
        state.level = *followed;
        hasHome = true;
    }
    if (!hasHome)
        return hasHome.Error();
    if (!*hasHome && !said.letGo)
        return {};
    stay = ShownNamesOf(state.live);
    if (!ProgramsInTrle(session).empty())
        return {};
    if (const auto status = SendHome(session, state, owner, !*hasHome); !status)
        return status;
    const Msg words = *hasHome ? Msg::StateReturned : Msg::StateLetGo;
    if (!stay.empty())
        session.host.Tell(Tone::Warning,
                          GetMsg(words, {TextOf(HomeOf(session, state.level)), ShownNames(stay)}));
    stay.clear();
    return {};
}

bool FollowMovedState(Session& session, const Whereabouts& said)
{
    const Path noted = session.TrleFolder();
    const auto isThere = IsFolder(noted);
    if (said.trle.empty() || !isThere || *isThere)
        return true;
    const auto owner = ReadOwnerAsNoted(session);
    if (!owner || !*owner || (*owner)->folder.path != noted.native())
        return true;
    const auto isNoted = HasMark(said.trle, (*owner)->folder);
    if (!isNoted || !*isNoted) {
        session.host.Tell(Tone::Error,
                          GetMsg(Msg::NotThatFolder, {TextOf(said.trle), TextOf(noted)}));
        return false;
    }
    if (const auto held = session.locks.Hold(said.trle); !held) {
        TellFailure(session, GetMsg(Msg::FolderNotLocked, {TextOf(said.trle)}), held.Error());
        return false;
    }
    session.preferences.trlePath = said.trle.native();
    return true;
}

namespace
{

/// Savegames wait in a Level Editor's folder that is not where it was.
std::string WhatWaitsElsewhere(const Session& session)
{
    const auto isThere = IsFolder(session.TrleFolder());
    const auto owner = ReadOwnerAsNoted(session);
    if (!isThere || *isThere || !owner || !*owner || !(*owner)->owner ||
        *(*owner)->owner == originalCode || (*owner)->marker != absentMarker)
        return {};
    return GetMsg(Msg::WaitingStateAway,
                  {Readable((*owner)->home.path), Readable((*owner)->folder.path)});
}

} // namespace

std::string RemedyInTrle(const Session& session)
{
    const auto standing = LookAtStanding(session);
    if (!standing)
        return GetMsg(Msg::MendRoomRemedy);
    const auto homeless = FindHomeless(session, *standing).ValueOr({});
    const bool homeIsAway = homeless && !homeless->live.empty() &&
                            !IsFolder(HomeOf(session, homeless->level)).ValueOr(true);
    if (homeIsAway || !WhatWaitsElsewhere(session).empty())
        return GetMsg(Msg::DoctorWaitsRemedy);
    if (BackupIsAway(session))
        return GetMsg(Msg::MendBackupRemedy, {TextOf(session.BackupFolder())});
    return GetMsg(Msg::MendRoomRemedy);
}

std::vector<std::string> OwedOriginals(const Session& session)
{
    std::vector<std::string> owed;
    const auto owner = ReadOwner(session);
    if (owner && *owner && (*owner)->owner && *(*owner)->owner != originalCode)
        for (const std::string& name : (*owner)->owed)
            owed.push_back(Readable(name));
    return owed;
}

std::string WhatWaitsInTrle(const Session& session)
{
    const auto standing = LookAtStanding(session);
    if (!standing)
        return {}; // that it cannot be told is told elsewhere
    std::vector<std::string> words;
    if (const std::string elsewhere = WhatWaitsElsewhere(session); !elsewhere.empty())
        words.push_back(elsewhere);
    const bool away = BackupIsAway(session);
    const bool original = IsOriginalButForLeftovers(session, *standing);
    if (!original && standing->owner && !standing->owner->owed.empty()) {
        std::vector<std::string> owed;
        for (const std::string& name : standing->owner->owed)
            owed.push_back(Readable(name));
        words.push_back(GetMsg(Msg::WaitingOriginals, {ShownNames(owed)}));
    }
    if (original) {
        std::vector<std::string> originals;
        for (const std::string& name : standing->owner->overwritten) {
            const auto relative = SafeRelative(name);
            if (relative && (away || IsFile(session.BackupFolder() / *relative).ValueOr(true)))
                originals.push_back(Readable(name));
        }
        std::vector<std::string> brought;
        for (const OwnedFile& file : standing->owner->added)
            if (ShouldGo(session, file))
                brought.push_back(Readable(file.name));
        if (!originals.empty())
            words.push_back(GetMsg(Msg::WaitingOriginals, {ShownNames(originals)}));
        if (!brought.empty())
            words.push_back(GetMsg(Msg::WaitingBrought, {ShownNames(brought)}));
    }
    const auto homeless = FindHomeless(session, *standing).ValueOr({});
    if (homeless && !homeless->live.empty()) {
        const Path home = HomeOf(session, homeless->level);
        const bool gone = !IsFolder(home).ValueOr(true);
        words.push_back(GetMsg(gone ? Msg::WaitingStateGone : Msg::WaitingState,
                               {TextOf(home), ShownNames(ShownNamesOf(homeless->live))}));
    }
    return Join(words, "; ");
}

} // namespace kestrova
