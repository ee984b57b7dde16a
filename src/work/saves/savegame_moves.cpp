#include "saves/savegame_moves.h"

#include "archive/level_folders.h"
#include "core/file_kinds.h"
#include "core/name_list.h"
#include "core/staged_file.h"
#include "formats/level_folder.h"
#include "formats/program_folder.h"
#include "formats/savegame_records.h"
#include "formats/trle_folder.h"
#include "history/changes.h"
#include "history/history.h"
#include "history/standing.h"
#include "platform/places.h"
#include "saves/archive_slots.h"
#include "saves/savegame_plan.h"
#include "saves/savegame_store.h"
#include "session/operation.h"
#include "swap/live_state.h"
#include "swap/recovery.h"
#include "words/restore.h"
#include "words/saves.h"

#include <algorithm>
#include <map>

namespace kestrova
{

namespace
{

/// Keeps all files of a folder in the history.
Status KeepFilesOf(const ChangeParts& parts, LevelCode code, const Path& folder, Message reason)
{
    const auto files = ListFiles(folder, OnDisk::PatAll);
    return files ? KeepInHistory(parts.machine, parts.folders, parts.settings, code, *files,
                                 Told(reason))
                 : Status{files.Error()};
}

/// Contents of savegames that no folder holds after the change.
std::set<std::string> ContentsThatGo(const std::vector<ChangedFolder>& folders,
                                     const std::set<std::string>& elsewhere)
{
    std::set<std::string> going;
    for (const ChangedFolder& folder : folders)
        for (const StateFile& file : folder.before)
            if (MatchesPattern(file.name, OnDisk::SavegamePattern) &&
                !elsewhere.contains(file.hash))
                going.insert(file.hash);
    for (const ChangedFolder& folder : folders)
        for (const ComingFile& file : folder.after)
            going.erase(file.hash);
    return going;
}

/// Ids of the newest entries that hold these contents, oldest first.
std::vector<std::string> IdsOf(const Folders& folders, LevelCode code,
                               const std::set<std::string>& contents)
{
    std::map<std::string, std::size_t> places;
    const auto entries = HistoryOf(folders, code);
    for (std::size_t i = 0; i < entries.size(); ++i)
        if (contents.contains(entries[i].hash))
            places[entries[i].hash] = i;
    std::set<std::size_t> order;
    for (const auto& [hash, place] : places)
        order.insert(place);
    std::vector<std::string> ids;
    for (const std::size_t place : order)
        ids.push_back(entries[place].id);
    return ids;
}

/// One of the two moves.
struct Move {
    LevelCode code;
    ChangeKind kind;
    Message reason;
    Path live;
};

/// Makes what was planned, counts `added` savegames more in the archive, and shows it. `kept` gets
/// the ids of savegames that the history alone holds now.
Status MakePlanned(const ArchiveParts& parts, const Move& move, const SavegamePlan& plan, int added,
                   const std::set<std::string>& elsewhere, std::vector<std::string>& kept)
{
    const LevelCode code = move.code;
    auto folders = plan.Changes();
    if (!folders)
        return folders.Error();
    const auto before = LoadSavegameStore(parts.folders, parts.preferences, code);
    if (!before)
        return before.Error();
    const auto count = static_cast<std::int32_t>(std::int64_t{before->header.archivedCount} +
                                                 added); // wraps as the record does
    const Path header = SlotsRootOf(parts.folders, code) / FileNameOf(OnDisk::FragSavegameHeader);
    Change change = NewChange(parts, move.kind, code);
    change.reason = Told(move.reason);
    change.header = platform::AbsolutePath(header).native();
    change.archivedCount = count;
    change.archivedBefore = before->header.archivedCount;
    change.live = move.live.native();
    change.folders = std::move(*folders);
    const auto going = ContentsThatGo(change.folders, elsewhere);
    auto status = MakeChange(parts, change, elsewhere);
    if (status && !going.empty())
        kept = IdsOf(parts.folders, code, going);
    const auto after = LoadSavegameStore(parts.folders, parts.preferences, code);
    if (status) {
        if (after)
            WriteArchivedCount(change, count);
        status = EndChange(parts.folders, parts.settings, change);
    }
    parts.list.Select(code);
    return status;
}

/// Takes the archive slots without a savegame away from the end; the number of the last that has
/// one, 0 when none has.
Result<int> LastFilledSlot(const ChangeParts& parts, LevelCode code, const Path& root)
{
    auto last = LastSlot(root);
    for (; last && *last > 0; --*last) {
        const Path slot = ResolvePath(ArchiveSlot(root, *last));
        const auto savegames = SavegamesIn(slot);
        if (!savegames)
            return savegames.Error();
        if (!savegames->empty())
            break;
        if (auto status = KeepFilesOf(parts, code, slot, Msg::ReasonEmptySlot); !status)
            return status.Error();
        (void)RemoveFolder(slot); // one that stays counts as taken, and is tried again
    }
    return last;
}

/// The temporary folder of an older program may hold the only copy of what it moved.
Status ClearTemporary(const ChangeParts& parts, LevelCode code)
{
    const Path folder = ResolvePath(InFolder(parts.folders.program, OnDisk::DirTempSavegame));
    if (!FolderExists(folder))
        return {};
    if (auto status = KeepFilesOf(parts, code, folder, Msg::ReasonTempLeft); !status)
        return status;
    (void)RemoveFolder(folder); // nothing is read from it
    return {};
}

/// The live savegames with their notes and pictures.
Status TakeSnapshot(const ChangeParts& parts, LevelCode code, const Path& live)
{
    auto files = ListFiles(live, OnDisk::PatAll);
    if (!files)
        return files.Error();
    std::erase_if(*files,
                  [](const Path& file) { return !IsPlayersFile(file.filename().native()); });
    return KeepInHistory(parts.machine, parts.folders, parts.settings, code, *files,
                         Told(Msg::ReasonBeforeRestore));
}

/// Which of the slot's savegames come, newest first, until the fifteen places are taken: those that
/// are live already go from the slot, the others get the lowest free place.
void TakeFromSlot(SavegamePlan& plan, SavegamePlan::Folder slot, SavegamePlan::Folder passing,
                  std::ptrdiff_t free, SavegamesMoved& counts)
{
    const auto names = plan.Savegames(slot);
    for (const std::size_t i : SortIndex(plan.NumbersOf(slot, names), true)) {
        const std::int32_t number = plan.NumberOf(slot, names[i]);
        const auto there = plan.NumbersOf(passing, plan.Savegames(passing));
        if (std::find(there.begin(), there.end(), number) != there.end()) {
            plan.DeleteSavegame(slot, names[i]);
            ++counts.known;
            continue;
        }
        std::size_t place = 0;
        while (place < gameSlotCount && plan.Has(passing, SlotName(place)))
            ++place;
        if (place == gameSlotCount)
            break;
        plan.MoveSavegame(slot, names[i], passing, SlotName(place), true);
        ++counts.moved;
        // Upwards, so that only a folder that held more than fifteen ends it here.
        if (++free < 1)
            break;
    }
    counts.waiting = static_cast<int>(plan.Savegames(slot).size());
}

/// A folder in the plan, one spelling of each name in it.
Result<SavegamePlan::Folder> FolderOf(const ArchiveParts& parts, LevelCode code, SavegamePlan& plan,
                                      const Path& folder)
{
    if (auto status =
            SettleTwins(parts.host, parts.machine, parts.settings, parts.folders, code, folder);
        !status)
        return status.Error();
    return plan.AddFolder(folder);
}

/// The level's live folder, an earlier move being at its end.
Result<Path> ReadyLiveFolder(const ArchiveParts& parts, LevelCode code)
{
    if (auto status = EndEarlierMove(parts); !status)
        return status.Error();
    const auto folder = LiveStateFolder(parts.folders, parts.archive, code);
    if (!folder)
        return folder.Error();
    return ResolvePath(*folder);
}

} // namespace

std::string WordsAboutKept(const SavegamesMoved& moved, LevelCode code)
{
    if (moved.kept.empty())
        return {};
    return GetMsg(Msg::SavegamesToHistory, {std::to_string(moved.kept.size()),
                                            ShownNames(moved.kept), std::to_string(code)});
}

Result<SavegamesMoved> ArchiveSavegamesOf(const ArchiveParts& parts, LevelCode code)
{
    const Operation operation{parts};
    const auto live = ReadyLiveFolder(parts, code);
    if (!live)
        return live.Error();
    SavegamePlan plan;
    const auto from = FolderOf(parts, code, plan, *live);
    if (!from)
        return from.Error();
    const auto names = plan.Savegames(*from);
    if (names.empty())
        return SavegamesMoved{};
    const Path root = SlotsRootOf(parts.folders, code);
    if (auto status = MakeFolder(root); !status)
        return status.Error();
    const auto slots = SurveySlots(root);
    if (!slots)
        return slots.Error();

    const auto slot = plan.AddNew(ArchiveSlot(root, slots->free));
    const auto numbers = plan.NumbersOf(*from, names);
    std::set<std::string> elsewhere;
    SavegamesMoved counts{static_cast<int>(names.size()), 0, 0, slots->free, 0, {}};
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (slots->byNumber.contains(numbers[i])) {
            NoteArchived(*slots, *live / names[i], numbers[i], elsewhere);
            ++counts.known;
        } else {
            plan.MoveSavegame(*from, names[i], slot, names[i], false);
            ++counts.moved;
        }
    }
    const std::string keep = NewestOf(names, numbers);
    // The others go before it is renamed, so that one which shares its note does not take it along.
    for (const std::string& name : names)
        if (name != keep)
            plan.DeleteSavegame(*from, name);
    if (SlotNumberOf(keep) > 0)
        plan.MoveSavegame(*from, keep, *from, SlotName(0), true);
    const Move move{code, ChangeKind::SlotsFreed, Msg::ReasonArchived, *live};
    if (auto status = MakePlanned(parts, move, plan, counts.moved, elsewhere, counts.kept); !status)
        return status.Error();
    return counts;
}

Result<SavegamesMoved> RestoreSavegamesOf(const ArchiveParts& parts, LevelCode code)
{
    const Operation operation{parts};
    const auto live = ReadyLiveFolder(parts, code);
    if (!live)
        return live.Error();
    const auto standing = SavegamesIn(*live);
    if (!standing)
        return standing.Error();
    SavegamesMoved counts{static_cast<int>(standing->size()), 0, 0, 0, 0, {}};
    if (standing->size() == gameSlotCount)
        return counts;
    const Path root = SlotsRootOf(parts.folders, code);
    const auto last = LastFilledSlot(parts, code, root);
    if (!last)
        return last.Error();
    counts.slot = *last;
    if (*last == 0)
        return counts;
    if (auto status = ClearTemporary(parts, code); !status)
        return status.Error();

    SavegamePlan plan;
    const auto slots = FolderOf(parts, code, plan, *live);
    const auto slot = slots ? FolderOf(parts, code, plan, ArchiveSlot(root, *last)) : slots;
    if (!slot)
        return slot.Error();
    if (auto status = TakeSnapshot(parts, code, *live); !status)
        return status.Error();
    const auto passing = plan.AddPassing();
    const auto before = plan.Savegames(*slots);
    for (const std::string& name : before)
        plan.MoveSavegame(*slots, name, passing, name, true);
    TakeFromSlot(plan, *slot, passing, std::ptrdiff_t{gameSlotCount} - std::ssize(before), counts);
    const auto names = plan.Savegames(passing);
    const auto order = SortIndex(plan.NumbersOf(passing, names), false);
    for (std::size_t i = 0; i < order.size(); ++i)
        plan.MoveSavegame(passing, names[order[i]], *slots, SlotName(i), true);
    // What stays live was kept with the snapshot, whatever the game writes over it meanwhile.
    const Move move{code, ChangeKind::SlotsFilled, Msg::ReasonBeforeRestore, *live};
    if (auto status = MakePlanned(parts, move, plan, -(counts.moved + counts.known),
                                  plan.Staying(*slots), counts.kept);
        !status)
        return status.Error();
    return counts;
}

Result<SavegamesMoved> ArchiveSavegames(const ArchiveParts& parts)
{
    const auto code = parts.list.Selected();
    return code ? ArchiveSavegamesOf(parts, *code) : SavegamesMoved{};
}

Result<SavegamesMoved> RestoreSavegames(const ArchiveParts& parts)
{
    const auto code = parts.list.Selected();
    return code ? RestoreSavegamesOf(parts, *code) : SavegamesMoved{};
}

Status EndEarlierMove(const ArchiveParts& parts)
{
    if (auto status = FinishChange(parts.machine, parts.folders, parts.archive, parts.settings);
        !status) {
        if (status.Error().code != ErrorCode::Damaged)
            return status;
        parts.host.Tell(Tone::Error, GetMsg(Msg::ChangeNoteDamaged, {status.Error().subject}));
    }
    if (!InterruptedWork(parts.folders, parts.archive).empty())
        return Failure{ErrorCode::Refused, {}, GetMsg(Msg::WorkPending)};
    return {};
}

} // namespace kestrova
