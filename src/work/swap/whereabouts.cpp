#include "swap/whereabouts.h"

#include "archive/level_folders.h"
#include "core/look.h"
#include "history/history.h"
#include "history/players_files.h"
#include "history/swap_journal_file.h"
#include "platform/file_content.h"
#include "session/telling.h"
#include "swap/owned_files.h"
#include "words/originals.h"
#include "words/restore.h"
#include "words/session.h"

#include <algorithm>

namespace kestrova
{

namespace
{

bool HoldsAnyState(const Path& folder, const std::vector<StateFile>& files)
{
    return std::any_of(files.begin(), files.end(), [&](const StateFile& file) {
        std::string hash;
        return !platform::HashOfFile(ResolvePath(folder / file.name), hash) && hash == file.hash;
    });
}

/// Files that a level has in common with the originals tell nothing: any folder has them.
bool HoldsAnyFile(const Folders& folders, const Path& folder, const std::vector<OwnedFile>& files)
{
    return std::any_of(files.begin(), files.end(), [&](const OwnedFile& file) {
        const auto relative = SafeRelative(file.name);
        const auto stands = [&](const Path& root) {
            return IsAsListed(file, platform::FactsOf(ResolvePath(root / *relative)));
        };
        return relative && file.modifiedNs != 0 && stands(folder) && !stands(folders.Backup());
    });
}

/// Some disks number their folders anew each time; what the swap put there tells it then.
Result<bool> IsFolderOfSwap(const Folders& folders, const SwapJournal& journal, const Path& folder)
{
    const auto isThere = IsFolder(folder);
    if (!isThere || !*isThere)
        return isThere;
    const auto isNoted = HasMark(folder, journal.folder);
    if (!isNoted || *isNoted)
        return isNoted;
    return HoldsAnyFile(folders, folder, journal.remove) ||
           HoldsAnyFile(folders, folder, journal.install) || HoldsAnyState(folder, journal.live);
}

bool NeedsComingStore(const SwapJournal& journal)
{
    return journal.phase == SwapPhase::Coming && journal.to >= 0;
}

const FolderMark& NeededRoot(const SwapJournal& journal)
{
    return NeedsComingStore(journal) ? journal.toRoot : journal.fromRoot;
}

/// `store`: where the needed store would be in that root.
Result<bool> IsRootOfSwap(const Folders& folders, const SwapJournal& journal, const Path& store)
{
    const Path root = RootOfStore(store);
    const auto isThere = IsFolder(root);
    if (!isThere || !*isThere)
        return isThere;
    if (NeededRoot(journal).inode == 0)
        return true;
    const auto isNoted = HasMark(root, NeededRoot(journal));
    if (!isNoted || *isNoted)
        return isNoted;
    if (HoldsAnyState(store, journal.store) || HoldsAnyState(store, journal.live))
        return true;
    if (!NeedsComingStore(journal))
        return false;
    const auto files = StateFilesIn(folders.trle);
    if (!files)
        return false; // nobody is sent there on a guess
    const auto live = HashesOf(*files);
    return live && HoldsAnyState(store, *live);
}

Path StoreBelow(const Path& root, const Path& noted)
{
    return root / noted.parent_path().filename() / noted.filename();
}

void SetNeededStore(SwapJournal& journal, const Path& store)
{
    (NeedsComingStore(journal) ? journal.toStore : journal.fromStore) = store.native();
    // Without its identity the folder is known by its path alone.
    (NeedsComingStore(journal) ? journal.toRoot : journal.fromRoot) =
        MarkOf(RootOfStore(store)).ValueOr({});
}

/// Follows folders that were moved by a rename to where the program knows them already. One that
/// cannot be looked at is no moved one.
void FollowKnown(const Folders& folders, const Archive& archive, SwapJournal& journal)
{
    if (!IsFolderOfSwap(folders, journal, journal.folder.path).ValueOr(true) &&
        HasMark(folders.trle, journal.folder).ValueOr(false))
        journal.folder.path = folders.trle.native();
    const Path store = NeededStore(folders, journal);
    const Path loaded = FolderFromText(Trim(archive.header.secondaryFolder));
    if (!store.empty() && !IsRootOfSwap(folders, journal, store).ValueOr(true) &&
        NeededRoot(journal).inode != 0 && HasMark(loaded, NeededRoot(journal)).ValueOr(false))
        SetNeededStore(journal, StoreBelow(loaded, store));
}

bool NotLookedAt(Host& host, const Failure& failure)
{
    TellFailure(host, GetMsg(Msg::InterruptedFailed), failure);
    return false;
}

bool FollowSaidTrle(const SwapParts& parts, Folders& folders, SwapJournal& journal,
                    const Path& said)
{
    const Path noted = journal.folder.path;
    const auto isNoted = IsFolderOfSwap(folders, journal, said);
    auto mark = MarkOf(said);
    if (!isNoted || !mark)
        return NotLookedAt(parts.host, isNoted ? mark.Error() : isNoted.Error());
    if (!*isNoted && !Confirmed(parts.host, said, noted))
        return false;
    if (const auto held = parts.locks.Hold(said); !held) {
        TellFailure(parts.host, GetMsg(Msg::FolderNotLocked, {TextOf(said)}), held.Error());
        return false;
    }
    // Whoever moved the folder that the preferences name means the moved one from now on.
    if (folders.trle == noted) {
        parts.preferences.trlePath = said.native();
        folders.trle = said;
    }
    journal.folder = std::move(*mark);
    return true;
}

bool FollowSaidArchive(Host& host, const Folders& folders, SwapJournal& journal, const Path& said)
{
    const Path noted = NeededStore(folders, journal);
    if (noted.empty() || noted == StateStoreOf(folders, originalCode))
        return true;
    const Path store = StoreBelow(said, noted);
    const auto isNoted = IsRootOfSwap(folders, journal, store);
    if (!isNoted)
        return NotLookedAt(host, isNoted.Error());
    if (!*isNoted && !Confirmed(host, said, RootOfStore(noted)))
        return false;
    SetNeededStore(journal, store);
    return true;
}

} // namespace

bool Confirmed(Host& host, const Path& said, const Path& noted)
{
    if (FolderExists(said) &&
        host.AskYesNo(GetMsg(Msg::AskIsThatFolder, {TextOf(said), TextOf(noted)})))
        return true;
    host.Tell(Tone::Error, GetMsg(Msg::NotThatFolder, {TextOf(said), TextOf(noted)}));
    return false;
}

Path NeededStore(const Folders& folders, const SwapJournal& journal)
{
    if (journal.phase == SwapPhase::Restore)
        return {};
    // What is given up is that of the phase in which this was said: behind it comes the original's.
    if (journal.storeLetGo && LevelOfNeededStore(folders, journal).code != originalCode)
        return {};
    const bool coming = NeedsComingStore(journal);
    // The original configuration's store goes where the program's folder goes.
    if ((coming ? journal.to : journal.from) == originalCode)
        return StateStoreOf(folders, originalCode);
    return coming ? journal.toStore : journal.fromStore;
}

LevelPlace LevelOfNeededStore(const Folders& folders, const SwapJournal& journal)
{
    const bool coming = NeedsComingStore(journal);
    const LevelCode code = coming ? journal.to : journal.from;
    if (code == originalCode)
        return {code, LevelHomeOf(folders, code)};
    return {code, Path{coming ? journal.toStore : journal.fromStore}.parent_path()};
}

Result<std::optional<LackingFolder>> LackingOf(const Folders& folders, const SwapJournal& journal)
{
    const Path folder = journal.folder.path;
    const auto isNoted = IsFolderOfSwap(folders, journal, folder);
    if (!isNoted)
        return isNoted.Error();
    if (!*isNoted)
        return std::optional{LackingFolder{Place::LevelEditor, folder, FolderExists(folder)}};
    const Path store = NeededStore(folders, journal);
    if (store.empty() || store == StateStoreOf(folders, originalCode))
        return std::optional<LackingFolder>{};
    const auto isRoot = IsRootOfSwap(folders, journal, store);
    if (!isRoot)
        return isRoot.Error();
    if (*isRoot)
        return std::optional<LackingFolder>{};
    const Path root = RootOfStore(store);
    return std::optional{LackingFolder{Place::Archive, root, FolderExists(root)}};
}

Result<std::optional<LackingFolder>> WhatMendingLacks(const Folders& folders,
                                                      const Archive& archive)
{
    auto journal = ReadJournal(folders);
    if (!journal)
        return journal.Error();
    if (!*journal)
        return std::optional<LackingFolder>{};
    FollowKnown(folders, archive, **journal);
    return LackingOf(folders, **journal);
}

bool FollowMovedFolders(const SwapParts& parts, SwapJournal& journal, const Whereabouts& said)
{
    Folders folders = parts.folders;
    const std::string before = FormatJournal(journal);
    FollowKnown(folders, parts.archive, journal);
    if (!said.trle.empty() && !FollowSaidTrle(parts, folders, journal, said.trle))
        return false;
    if (!said.archiveFolder.empty() &&
        !FollowSaidArchive(parts.host, folders, journal, said.archiveFolder))
        return false;
    const auto lacking = LackingOf(folders, journal);
    if (!lacking)
        return NotLookedAt(parts.host, lacking.Error());
    if (said.letGo && *lacking && (*lacking)->place == Place::Archive)
        journal.storeLetGo = true;
    if (FormatJournal(journal) == before)
        return true;
    if (const auto status = WriteJournal(folders, journal); !status) {
        TellFailure(parts.host, GetMsg(Msg::InterruptedFailed), status.Error());
        return false;
    }
    return true;
}

std::optional<Whereabouts> AskWhere(Host& host, const LackingFolder& lacking)
{
    const bool trle = lacking.place == Place::LevelEditor;
    switch (host.AskYesNoCancel(
        GetMsg(trle ? Msg::AskWhereFolder : Msg::AskWhereStore,
               {lineBreak, TextOf(lacking.noted), lineBreak, lineBreak, lineBreak, lineBreak}))) {
    case YesNoCancel::Yes:
        if (auto chosen =
                host.ChooseFolder(GetMsg(trle ? Msg::TitleWhereFolder : Msg::TitleWhereStore),
                                  lacking.noted.parent_path()))
            return trle ? Whereabouts{*chosen, {}, false} : Whereabouts{{}, *chosen, false};
        return {};
    case YesNoCancel::No:
        return Whereabouts{{}, {}, true};
    case YesNoCancel::Cancel:
        break;
    }
    return {};
}

} // namespace kestrova
