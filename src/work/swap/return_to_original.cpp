#include "swap/return_to_original.h"

#include "archive/level_folders.h"
#include "core/file_kinds.h"
#include "core/look.h"
#include "core/name_list.h"
#include "core/name_set.h"
#include "core/removal.h"
#include "core/staged_file.h"
#include "formats/program_folder.h"
#include "formats/trle_folder.h"
#include "history/history.h"
#include "history/swap_journal_file.h"
#include "originals/vault.h"
#include "swap/backup_state.h"
#include "swap/file_names.h"
#include "swap/live_state.h"
#include "swap/owned_files.h"
#include "swap/placements.h"
#include "swap/whereabouts.h"
#include "words/restore.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// The live state leaves the folder: into its store, or, when the level has been removed since,
/// into the history.
Status SaveLiveState(Machine& machine, const Folders& folders, const ProgramSettings& settings,
                     const LevelPlace& owner, const Path& store, std::vector<OwnedFile>& strangers)
{
    std::vector<StateFile> live;
    const auto there = StrangersThere(folders, strangers);
    const auto hasHome = IsFolder(store.parent_path());
    if (!there || !hasHome)
        return there ? hasHome.Error() : there.Error();
    strangers = *there;
    if (*hasHome) {
        if (auto status = StoreLiveState(machine, folders, settings, owner, store, live, strangers);
            !status)
            return status;
    } else {
        const auto files = LiveStateFiles(folders, strangers);
        if (!files)
            return files.Error();
        auto hashes = HashesOf(*files);
        if (!hashes)
            return hashes.Error();
        live = std::move(*hashes);
        if (auto status = KeepInHistory(machine, folders, settings, owner, *files,
                                        Told(Msg::ReasonInterrupted));
            !status)
            return status;
    }
    strangers.clear();
    return DropLiveState(machine, folders, settings, owner, live, strangers);
}

} // namespace

void DeleteBrought(const SwapParts& parts, const Folders& folders,
                   const std::vector<OwnedFile>& files, const LevelPlace& level, LeftInTrle& left)
{
    const bool away = BackupIsAway(folders);
    const OwnedNames brought{files}; // the old and the new level may both have brought a name
    struct Going {
        Path relative;
        Path place; ///< exactly as it is spelled
        OwnedFile file;
    };
    std::vector<Going> going;
    std::vector<Path> unsafe;
    {
        SafeContents safe{parts, folders, level};
        for (const OwnedFile& file : files) {
            const auto found = FindListed(folders, file);
            if (!found) { // it stays noted
                left.added.push_back(file);
                continue;
            }
            if (!*found)
                continue;
            const auto& [relative, place, facts] = **found;
            if (StaysWithCompactBackup(parts.preferences, file.name) ||
                SameContent(place, folders.Backup() / relative))
                continue;
            const bool known = brought.IsAsPut(file.name, facts) || safe.Holds(file, relative);
            if (!known && away) {
                left.unsure.push_back(file);
                continue;
            }
            going.push_back({relative, place, file});
            if (!known)
                unsafe.push_back(relative);
        }
    }
    const Keeping keeping = KeepOriginals(parts.machine, folders, unsafe);
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

Status RestoreMissing(const Folders& folders, const PreferencesRecord& preferences,
                      const SwapJournal& journal, LeftInTrle& left)
{
    const bool away = BackupIsAway(folders);
    NameSet owed;
    const auto restore = [&](const Path& relative) {
        if (IsPlayersPlace(relative))
            return;
        if (away) { // whatever is missing may be an original
            const std::string name = ToBackslashes(relative);
            if (!IsFile(folders.trle / relative).ValueOr(false) &&
                !StaysWithCompactBackup(preferences, name) && !owed.Has(name))
                left.overwritten.push_back(name);
            owed.Add(name);
            return;
        }
        const auto isOriginal = IsFile(folders.Backup() / relative);
        const auto isThere = IsFile(folders.trle / relative);
        // Where one of both cannot be told it waits.
        const bool wanted = isOriginal && isThere && *isOriginal && !*isThere;
        if (!isOriginal || !isThere || (wanted && !RestoreOriginal(folders, relative)))
            left.overwritten.push_back(ToBackslashes(relative));
    };
    std::vector<Path> originals;
    for (const Path& folder : {Path{}, Path{InFolder({}, OnDisk::DirData)}.relative_path()}) {
        const auto files = ListFiles(folders.Backup() / folder, OnDisk::PatAll);
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
            relative && IsFile(folders.Backup() / *relative).ValueOr(true))
            left.overwritten.push_back(file.name);
    return {};
}

void ClearHalfDone(const Folders& folders)
{
    const Path trle = folders.trle;
    for (const std::string_view fragment : {OnDisk::FragRoot, OnDisk::DirData, OnDisk::DirAudio})
        ClearStagedLeftovers(ResolvePath(InFolder(trle, fragment)));
    (void)ClearPlace(InFolder(trle, OnDisk::DirReady)); // the next swap tries again
}

void TellLeftovers(Host& host, const Folders& folders, const LeftInTrle& left)
{
    const auto tell = [&](Message words, const std::vector<std::string>& names) {
        if (!names.empty())
            host.Tell(Tone::Warning, GetMsg(words, {ShownNames(names)}));
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
    if (!left.overwritten.empty() && BackupIsAway(folders))
        host.Tell(Tone::Error, GetMsg(Msg::OriginalsNoBackup,
                                      {TextOf(folders.Backup()), ShownNames(left.overwritten)}));
    else
        tell(Msg::OriginalsNotBack, left.overwritten);
    tell(Msg::StateLeft, namesOf(left.strangers));
}

Status ReturnToOriginal(const SwapParts& parts, const Folders& folders, SwapJournal journal,
                        LeftInTrle& left)
{
    const Path store = NeededStore(folders, journal);
    const LevelPlace owner = LevelOfNeededStore(folders, journal);
    if (auto status =
            SettleTwins(parts.host, parts.machine, parts.settings, folders, owner, folders.trle);
        !status)
        return status;
    left.strangers = journal.strangers;
    if (journal.liveIsKept) { // the state of a level that has no folder any more
        const LevelPlace gone{journal.from, Path{journal.fromStore}.parent_path()};
        std::vector<OwnedFile> there;
        if (auto status =
                DropLiveState(parts.machine, folders, parts.settings, gone, journal.live, there);
            !status)
            return status;
    }
    if (auto status =
            SaveLiveState(parts.machine, folders, parts.settings, owner, store, left.strangers);
        !status)
        return status;
    ClearHalfDone(folders);
    std::vector<OwnedFile> brought = journal.install;
    brought.insert(brought.end(), journal.remove.begin(), journal.remove.end());
    const LevelPlace old{journal.from, Path{journal.fromStore}.parent_path()};
    DeleteBrought(parts, folders, brought, old, left);
    if (auto status = RestoreMissing(folders, parts.preferences, journal, left); !status)
        return status;
    (void)DeleteFile(folders.Marker()); // the owner record outweighs one that stays
    // From here on the state in the folder is that of the original configuration.
    journal.phase = SwapPhase::Coming;
    journal.to = originalCode;
    journal.toStore = StateStoreOf(folders, originalCode).native();
    journal.liveIsKept = false;
    journal.strangers = left.strangers;
    if (auto status = WriteJournal(folders, journal); !status)
        return status;
    if (auto status = SettleTwins(parts.host, parts.machine, parts.settings, folders, originalCode,
                                  journal.toStore);
        !status)
        return status;
    const auto stored = StoredState(folders, originalCode);
    if (!stored)
        return stored.Error();
    BroughtState state = BringStateIn(parts.machine, folders, parts.settings, journal.toStore,
                                      *stored, originalCode, nullptr);
    if (!state.waiting.empty()) // they are in their store, and no reason to wait for ever
        parts.host.Tell(Tone::Warning, GetMsg(Msg::StateNotIn, {ShownNames(state.waiting)}));
    OwnerRecord record;
    SetOwner(folders, parts.archive, record, originalCode);
    record.overwritten = std::move(state.replaced);
    record.overwritten.insert(record.overwritten.end(), left.overwritten.begin(),
                              left.overwritten.end());
    record.owed = left.overwritten;
    record.added = left.added;
    record.added.insert(record.added.end(), left.unsure.begin(), left.unsure.end());
    record.strangers = StrangersThere(folders, left.strangers).ValueOr(left.strangers);
    record.waiting = std::move(state.waiting);
    if (auto status = WriteOwner(parts.machine, folders, std::move(record)); !status)
        return status;
    return DropJournal(folders);
}

} // namespace kestrova
