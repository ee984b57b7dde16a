#include "history/history_index.h"

#include "core/look.h"
#include "core/staged_file.h"
#include "formats/program_folder.h"
#include "formats/record_json.h"
#include "history/players_files.h"
#include "words/message.h"

#include <algorithm>

namespace kestrova
{

namespace
{

using Json = NoteJson;

/// No level has that many kept files; a number above it was never given.
constexpr std::int32_t highestLast = 1'000'000'000;

Path IndexPath(const Folders& folders, LevelCode code)
{
    return InFolder(InFolder(folders.program, OnDisk::DirHistory),
                    Filled(OnDisk::FragHistoryIndex, {ZeroPadded(code, 4)}));
}

std::string Line(const HistoryEntry& entry)
{
    const Json json = {{"id", entry.id},
                       {"hash", entry.hash},
                       {"name", Readable(entry.name)},
                       {"title", entry.title},
                       {"number", entry.number},
                       {"size", entry.size},
                       {"time", entry.modifiedNs},
                       {"kept", entry.keptNs},
                       {"reason", entry.reason},
                       {"home", Readable(entry.home)},
                       {"picture", entry.picture}};
    return WrittenLine(json);
}

std::int32_t NumberOfId(const std::string& id)
{
    return LeadingNumber(id.substr(id.find('-') + 1));
}

std::int32_t HighestNumber(const std::vector<HistoryEntry>& entries)
{
    std::int32_t highest = 0;
    for (const HistoryEntry& entry : entries)
        highest = std::max(highest, NumberOfId(entry.id));
    return highest;
}

/// The number of a line that tells nothing else.
std::optional<std::int32_t> ParseLast(const std::string& line)
{
    const Json json = ParseNote(line);
    NoteReader reader{json};
    const auto last = reader.Number<std::int32_t>("last");
    const bool sound = reader.Good() && json.size() == 1 && last > 0 && last < highestLast;
    return sound ? std::optional{last} : std::nullopt;
}

std::optional<HistoryEntry> ParseLine(const std::string& line)
{
    const Json json = ParseNote(line);
    if (!json.is_object())
        return {};
    HistoryEntry entry;
    const auto text = [&](const char* name, std::string& value) {
        const auto found = json.find(name);
        if (found != json.end() && found->is_string())
            value = found->get<std::string>();
    };
    const auto number = [&](const char* name, auto& value) {
        const auto found = json.find(name);
        if (found != json.end() && found->is_number_integer())
            value = found->get<std::remove_reference_t<decltype(value)>>();
    };
    text("id", entry.id);
    text("hash", entry.hash);
    text("name", entry.name);
    text("title", entry.title);
    text("reason", entry.reason);
    text("home", entry.home);
    number("number", entry.number);
    number("size", entry.size);
    number("time", entry.modifiedNs);
    number("kept", entry.keptNs);
    // An index that does not say it has nothing of the player's under other names but pictures.
    const auto picture = json.find("picture");
    entry.picture = picture != json.end() && picture->is_boolean() ? picture->get<bool>()
                                                                   : !IsPlayersFile(entry.name);
    if (entry.id.empty() || !IsContentHash(entry.hash) || !SafeName(entry.name))
        return {};
    return entry;
}

} // namespace

Result<HistoryIndex> ReadHistoryIndex(const Folders& folders, LevelCode code)
{
    const Path file = IndexPath(folders, code);
    HistoryIndex index;
    const auto text = ReadFileIfThere(file, UINT64_C(64) << 20);
    if (!text)
        return text.Error();
    if (!*text)
        return index;
    for (std::string& line : Split(**text, '\n')) {
        if (line.empty())
            continue;
        if (auto entry = ParseLine(line))
            index.entries.push_back(std::move(*entry));
        else if (const auto last = ParseLast(line))
            index.last = std::max(index.last, *last);
        else
            index.strangeLines += line + "\n";
    }
    index.last = std::max(index.last, HighestNumber(index.entries));
    return index;
}

std::string NextHistoryId(HistoryIndex& index, LevelCode code)
{
    return ZeroPadded(code, 4) + "-" + std::to_string(++index.last);
}

Status WriteHistoryIndex(const Folders& folders, LevelCode code, const HistoryIndex& index)
{
    std::string text;
    if (index.last > HighestNumber(index.entries))
        text = WrittenLine(Json{{"last", index.last}});
    text += index.strangeLines;
    for (const HistoryEntry& entry : index.entries)
        text += Line(entry);
    return WriteWholeFile(IndexPath(folders, code), text);
}

} // namespace kestrova
