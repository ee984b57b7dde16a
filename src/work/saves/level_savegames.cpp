#include "saves/level_savegames.h"

#include "core/dates.h"
#include "core/look.h"
#include "core/name_list.h"
#include "formats/savegame_info.h"
#include "formats/trle_folder.h"
#include "history/history.h"
#include "history/standing.h"
#include "saves/archive_slots.h"
#include "saves/bring_back.h"
#include "saves/delete_savegames.h"
#include "saves/savegame_moves.h"
#include "saves/savegame_plan.h"
#include "saves/savegame_transfer.h"
#include "session/operation.h"
#include "session/telling.h"
#include "words/level_savegames.h"
#include "words/saves.h"

#include <algorithm>
#include <functional>

namespace kestrova
{

namespace
{

LevelSavegame Seen(SavegamePlace place, int slot, const Path& file)
{
    const platform::FileFacts facts = platform::FactsOf(file);
    const SavegameInfo info = ReadSavegameInfo(file);
    LevelSavegame seen{place, slot, file, {}, {}, Readable(info.title), info.number, 0, 0};
    seen.name = Readable(file.filename().native());
    seen.savedNs = facts.modifiedNs;
    seen.size = facts.size;
    return seen;
}

/// By the number behind the dot, since slot 10 stands behind slot 9.
void SortBySlot(std::vector<Path>& files)
{
    std::stable_sort(files.begin(), files.end(), [](const Path& a, const Path& b) {
        return SlotNumberOf(a) < SlotNumberOf(b);
    });
}

Status AddFolder(const Path& folder, SavegamePlace place, int slot,
                 std::vector<LevelSavegame>& found)
{
    auto files = SavegamesIn(folder);
    if (!files)
        return files.Error();
    SortBySlot(*files);
    for (const Path& file : *files)
        found.push_back(Seen(place, slot, file));
    return {};
}

void AddHistoryOf(const Folders& folders, LevelCode code, std::vector<LevelSavegame>& found)
{
    auto entries = HistoryOf(folders, code);
    std::reverse(entries.begin(), entries.end());
    for (const HistoryEntry& entry : entries)
        if (MatchesPattern(entry.name, OnDisk::SavegamePattern))
            found.push_back({SavegamePlace::History,
                             0,
                             {},
                             entry.id,
                             Readable(entry.name),
                             Readable(entry.title),
                             entry.number,
                             entry.modifiedNs,
                             entry.size,
                             ShownAsSpoken(entry.reason)});
}

/// The contents of the live folder that are among the chosen ones come no second time.
bool IsLiveAlready(const Path& live, const LevelSavegame& chosen)
{
    const auto files = SavegamesIn(live).ValueOr({});
    return std::any_of(files.begin(), files.end(),
                       [&](const Path& file) { return SameContent(file, chosen.file); });
}

Status BringOne(const ArchiveParts& parts, LevelCode code, const LevelSavegame& chosen)
{
    if (chosen.place == SavegamePlace::History)
        return StatusOf(BringBack(parts, code, chosen.id));
    const auto live = LiveStateFolder(parts.folders, parts.archive, code);
    if (!live)
        return live.Error();
    if (IsLiveAlready(ResolvePath(*live), chosen))
        return Failure{ErrorCode::Refused, {}, GetMsg(Msg::SavegameIsLive)};
    const FailedFiles failed = CopyIntoSlots(parts, code, {chosen.file});
    return failed.empty() ? Status{} : Status{failed.front().failure};
}

Status ExportOneChosen(const ArchiveParts& parts, LevelCode code, const LevelSavegame& chosen,
                       const Path& folder)
{
    if (chosen.place == SavegamePlace::History)
        return StatusOf(BringBackTo(parts.folders, code, chosen.id, folder));
    const FailedFiles failed = ExportSavegames(parts, code, {chosen.file}, folder, false);
    return failed.empty() ? Status{} : Status{failed.front().failure};
}

/// What stands in a folder under the names of the chosen ones, with another content.
std::vector<std::string> WhatIsReplaced(const std::vector<LevelSavegame>& chosen,
                                        const Path& folder)
{
    std::vector<std::string> replaced;
    for (const LevelSavegame& one : chosen) {
        const Path target = ResolvePath(folder / one.name);
        if (one.place != SavegamePlace::History && FileExists(target) &&
            !SameContent(one.file, target))
            replaced.push_back(WordsOf(Seen(SavegamePlace::Live, 0, target)));
    }
    return replaced;
}

/// Each of the chosen ones by itself; what could not be done is told once.
bool DoForEach(Host& host, const std::vector<LevelSavegame>& chosen, Message failure,
               const std::function<Status(const LevelSavegame&)>& work)
{
    std::vector<std::string> names;
    Failure first;
    for (const LevelSavegame& one : chosen) {
        const Status done = work(one);
        if (done)
            continue;
        if (names.empty())
            first = done.Error();
        names.push_back(WordsOf(one));
    }
    if (!names.empty())
        TellFailure(host, GetMsg(failure, {ShownNames(names)}), first);
    return names.empty();
}

} // namespace

Result<std::vector<LevelSavegame>> SavegamesOfLevel(const Folders& folders, const Archive& archive,
                                                    LevelCode code)
{
    std::vector<LevelSavegame> found;
    const auto live = LiveStateFolder(folders, archive, code);
    if (!live)
        return live.Error();
    if (auto status = AddFolder(ResolvePath(*live), SavegamePlace::Live, 0, found); !status)
        return status.Error();
    const Path root = SlotsRootOf(folders, code);
    const auto last = LastSlot(root);
    if (!last)
        return last.Error();
    for (int slot = *last; slot > 0; --slot)
        if (auto status = AddFolder(ArchiveSlot(root, slot), SavegamePlace::Slot, slot, found);
            !status)
            return status.Error();
    AddHistoryOf(folders, code, found);
    return found;
}

BesideSavegame BesideOf(const LevelSavegame& savegame)
{
    constexpr std::uint64_t longestNote = 64 << 10;
    constexpr std::size_t longestShown = 300;
    BesideSavegame beside;
    if (savegame.file.empty())
        return beside;
    const Path folder = savegame.file.parent_path();
    const std::string number = std::to_string(SlotNumberOf(savegame.file));
    for (const std::string_view name : {OnDisk::FragShotJpeg, OnDisk::FragShotBitmap})
        if (const Path shot = ResolvePath(folder / Filled(name, {number})); FileExists(shot))
            beside.picture = shot;
    // What cannot be read is only not shown.
    const auto note =
        ReadFileIfThere(ResolvePath(folder / Filled(OnDisk::FragNote, {number})), longestNote)
            .ValueOr(std::nullopt);
    if (note)
        beside.note = Readable(OnOneLine(
            ReplaceAll(FromWindows1252(Trim(*note)).substr(0, longestShown), "\r\n", "\n")));
    return beside;
}

std::string WordsOf(const LevelSavegame& savegame)
{
    return GetMsg(Msg::SavegameInWords,
                  {savegame.name, savegame.title, std::to_string(savegame.number),
                   DateText(savegame.savedNs)});
}

bool BringIntoSlots(const ArchiveParts& parts, LevelCode code,
                    const std::vector<LevelSavegame>& chosen)
{
    const Operation operation{parts};
    if (const auto ready = EndEarlierMove(parts); !ready) {
        TellFailure(parts.host, GetMsg(Msg::SavegamesNotMoved), ready.Error());
        return false;
    }
    const bool done =
        DoForEach(parts.host, chosen, Msg::SavegamesNotBroughtIn,
                  [&](const LevelSavegame& one) { return BringOne(parts, code, one); });
    parts.list.Select(code);
    return done;
}

bool ExportChosen(const ArchiveParts& parts, LevelCode code,
                  const std::vector<LevelSavegame>& chosen, const Path& folder)
{
    const Operation operation{parts};
    const auto replaced = WhatIsReplaced(chosen, folder);
    if (!replaced.empty() &&
        !parts.host.AskYesNo(GetMsg(Msg::AskExportOver, {TextOf(folder), ShownNames(replaced)})))
        return false;
    return DoForEach(parts.host, chosen, Msg::SavegamesNotExported, [&](const LevelSavegame& one) {
        return ExportOneChosen(parts, code, one, folder);
    });
}

bool DeleteChosen(const ArchiveParts& parts, LevelCode code,
                  const std::vector<LevelSavegame>& chosen)
{
    const Operation operation{parts};
    std::vector<std::string> names;
    for (const LevelSavegame& one : chosen)
        if (one.place != SavegamePlace::History)
            names.push_back(WordsOf(one));
    if (names.empty()) {
        parts.host.Tell(Tone::Plain, GetMsg(Msg::HistoryGoesByItself));
        return false;
    }
    if (!parts.host.AskYesNo(GetMsg(Msg::AskDeleteSavegames, {ShownNames(names)})))
        return false;
    const Status status = DeleteSavegames(parts, code, chosen);
    if (!status)
        TellFailure(parts.host, GetMsg(Msg::SavegamesNotDeleted), status.Error());
    parts.list.Select(code);
    return bool{status};
}

} // namespace kestrova
