#include "formats/stored_note.h"

#include "core/names.h"
#include "formats/record_json.h"

#include <algorithm>
#include <unordered_set>

namespace kestrova
{

namespace
{

constexpr std::int32_t storedVersion = 1;

/// The members that a stored file and what it came from have in common.
template <class Noted> bool ReadNoted(NoteReader& reader, Noted& noted)
{
    noted.name = reader.Text("name");
    noted.size = reader.Number<std::uint64_t>("size");
    noted.hash = reader.Text("hash");
    return reader.Good() && SafeName(noted.name) && IsContentHash(noted.hash);
}

bool ReadEntry(const NoteJson& json, StoredEntry& entry)
{
    NoteReader reader{json};
    if (!ReadNoted(reader, entry))
        return false;
    entry.modifiedNs = reader.Number<std::int64_t>("time");
    if (!reader.Has("from"))
        return reader.Good();
    NoteReader from{json["from"]};
    entry.from.emplace();
    return ReadNoted(from, *entry.from) && reader.Good();
}

NoteJson JsonOf(const StoredEntry& entry)
{
    NoteJson json = {{"name", Encoded(entry.name)},
                     {"size", entry.size},
                     {"time", entry.modifiedNs},
                     {"hash", entry.hash}};
    if (entry.from)
        json["from"] = {{"name", Encoded(entry.from->name)},
                        {"size", entry.from->size},
                        {"hash", entry.from->hash}};
    return json;
}

} // namespace

const StoredEntry* StoredNote::Find(std::string_view name) const
{
    const auto found = std::find_if(files.begin(), files.end(),
                                    [&](const StoredEntry& entry) { return entry.name == name; });
    return found == files.end() ? nullptr : &*found;
}

std::string FormatStoredNote(const StoredNote& note)
{
    std::string text = R"({"version":)" + std::to_string(storedVersion);
    const auto flag = [](bool value) { return value ? "true" : "false"; };
    text += std::string{R"(,"whole":)"} + flag(note.whole) + R"(,"changing":)" +
            flag(note.changing) + R"(,"files":[)";
    const char* between = "\n";
    for (const StoredEntry& entry : note.files) {
        text += between + WrittenLine(JsonOf(entry));
        text.pop_back();
        between = ",\n";
    }
    return text + "\n]}\n";
}

Result<StoredNote> ParseStoredNote(std::string_view text)
{
    const Failure damaged{ErrorCode::Damaged, {}, {}};
    if (text.size() > longestStoredNote)
        return damaged;
    const NoteJson json = ParseNote(text);
    NoteReader reader{json};
    const auto version = reader.Number<std::int32_t>("version");
    StoredNote note;
    note.whole = reader.Flag("whole");
    note.changing = reader.Flag("changing");
    if (!reader.Good() || version != storedVersion || !json.contains("files") ||
        !json["files"].is_array())
        return damaged;
    std::unordered_set<std::string> names;
    for (const NoteJson& each : json["files"])
        if (StoredEntry entry; ReadEntry(each, entry) && names.insert(entry.name).second)
            note.files.push_back(std::move(entry));
    return note;
}

} // namespace kestrova
