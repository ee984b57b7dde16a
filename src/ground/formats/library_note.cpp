#include "formats/library_note.h"

#include "core/names.h"
#include "formats/record_json.h"

#include <algorithm>

namespace kestrova
{

namespace
{

constexpr std::int64_t lastSecond = INT64_C(7'258'118'399); ///< of the year 2199
constexpr std::int64_t mostSeconds = INT64_C(100) * 366 * 24 * 3600;
constexpr std::size_t longestLibraryName = 1024;
constexpr std::size_t deepestLibrary = 40;
constexpr std::size_t mostEntries = 200'000;

constexpr std::pair<LevelStatus, std::string_view> statusWords[] = {
    {LevelStatus::New, "new"},
    {LevelStatus::Playing, "playing"},
    {LevelStatus::Finished, "finished"},
    {LevelStatus::GivenUp, "given-up"}};

std::string TidyTag(std::string_view tag)
{
    return std::string{
        TrimEnd(CutAtLetter(std::string{Trim(OnOneLine(Readable(tag)))}, longestTag))};
}

std::vector<std::string> TidyTags(const std::vector<std::string>& tags)
{
    std::vector<std::pair<std::string, std::string>> byFolded;
    for (const std::string& tag : tags)
        if (std::string tidy = TidyTag(tag); !tidy.empty())
            byFolded.emplace_back(FoldCase(tidy), std::move(tidy));
    const auto key = [](const auto& a, const auto& b) { return a.first < b.first; };
    std::stable_sort(byFolded.begin(), byFolded.end(), key);
    std::vector<std::string> tidied;
    const std::string* last = nullptr;
    for (auto& [folded, tag] : byFolded) {
        if ((last == nullptr || *last != folded) && tidied.size() < mostTags)
            tidied.push_back(std::move(tag));
        last = &folded;
    }
    return tidied;
}

/// Lines end by LF; other control characters become blanks.
std::string TidyText(std::string_view text)
{
    std::string tidy = CutAtLetter(ReplaceAll(Readable(text), "\r\n", "\n"), longestOwnNote);
    std::replace_if(
        tidy.begin(), tidy.end(),
        [](char c) { return static_cast<unsigned char>(c) < ' ' && c != '\n' && c != '\t'; }, ' ');
    while (!tidy.empty() && (tidy.back() == ' ' || tidy.back() == '\n'))
        tidy.pop_back();
    return tidy;
}

std::optional<std::int64_t> IntegerUpTo(const NoteJson& value, std::int64_t most)
{
    if (!value.is_number_integer() ||
        (value.is_number_unsigned() &&
         value.get<std::uint64_t>() > static_cast<std::uint64_t>(most)))
        return std::nullopt;
    const auto number = value.get<std::int64_t>();
    return number >= 0 ? std::optional{number} : std::nullopt;
}

/// A member that is what it should be is taken out of the object; what stays in it is the others.
template <class Take> void TakeMember(NoteJson& object, const char* name, Take take)
{
    const auto found = object.find(name);
    if (found != object.end() && take(*found))
        object.erase(found);
}

void TakeTime(NoteJson& object, const char* name, std::optional<std::int64_t>& time)
{
    TakeMember(object, name, [&](const NoteJson& value) {
        time = IntegerUpTo(value, lastSecond);
        return time.has_value();
    });
}

template <class Number>
void TakeNumber(NoteJson& object, const char* name, Number& number, std::int64_t most)
{
    TakeMember(object, name, [&](const NoteJson& value) {
        const auto read = IntegerUpTo(value, most);
        number = static_cast<Number>(read.value_or(0));
        return read.has_value();
    });
}

template <class Good>
void TakeText(NoteJson& object, const char* name, std::string& text, Good good)
{
    TakeMember(object, name, [&](const NoteJson& value) {
        const auto* read = value.get_ptr<const std::string*>();
        if (read == nullptr || !good(*read))
            return false;
        text = *read;
        return true;
    });
}

bool IsCover(std::string_view name)
{
    return SafeName(name) && name.size() <= longestLibraryName;
}

bool AreTags(const NoteJson& value)
{
    return value.is_array() && value.size() <= mostTags &&
           std::all_of(value.begin(), value.end(),
                       [](const NoteJson& tag) { return tag.is_string(); });
}

void TakeNote(NoteJson& object, LevelNote& note)
{
    TakeTime(object, "added", note.added);
    TakeTime(object, "lastPlayed", note.lastPlayed);
    TakeNumber(object, "secondsPlayed", note.secondsPlayed, mostSeconds);
    TakeNumber(object, "stars", note.stars, mostStars);
    TakeMember(object, "status", [&](const NoteJson& value) {
        const auto* word = value.get_ptr<const std::string*>();
        const auto status = word == nullptr ? std::nullopt : StatusFromWord(*word);
        note.status = status.value_or(LevelStatus::New);
        return status.has_value();
    });
    TakeMember(object, "tags", [&](const NoteJson& value) {
        if (!AreTags(value))
            return false;
        note.tags = TidyTags(value.get<std::vector<std::string>>());
        return true;
    });
    TakeText(object, "note", note.ownNote,
             [](const std::string& text) { return text.size() <= longestOwnNote; });
    TakeText(object, "cover", note.cover,
             [](const std::string& name) { return IsCover(Decoded(name)); });
    note.ownNote = TidyText(note.ownNote);
    note.cover = Decoded(note.cover);
}

std::string Dumped(const NoteJson& json)
{
    std::string text = WrittenLine(json);
    text.pop_back();
    return text;
}

/// False for what is no entry.
bool TakeEntry(NoteJson& object, LibraryEntry& entry)
{
    const auto code = object.is_object() && object.contains("code")
                          ? IntegerUpTo(object["code"], std::numeric_limits<LevelCode>::max())
                          : std::nullopt;
    if (!code)
        return false;
    entry.code = static_cast<LevelCode>(*code);
    object.erase("code");
    TakeText(object, "token", entry.token, IsContentHash);
    TakeText(object, "name", entry.name,
             [](const std::string& name) { return name.size() <= longestLibraryName; });
    TakeNote(object, entry.note);
    if (!object.empty())
        entry.others = Dumped(object);
    return true;
}

/// Values in values are written again by themselves, so their depth is bounded first.
bool IsShallow(std::string_view text)
{
    std::size_t depth = 0;
    bool quoted = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (quoted && c == '\\')
            ++i;
        else if (c == '"')
            quoted = !quoted;
        else if (!quoted && (c == '[' || c == '{') && ++depth > deepestLibrary)
            return false;
        else if (!quoted && (c == ']' || c == '}') && depth > 0)
            --depth;
    }
    return true;
}

NoteJson Object(const std::string& others)
{
    return others.empty() ? NoteJson::object() : ParseNote(others);
}

NoteJson JsonOf(const LibraryEntry& entry)
{
    NoteJson json = Object(entry.others);
    const LevelNote& note = entry.note;
    json["code"] = entry.code;
    if (!entry.token.empty())
        json["token"] = entry.token;
    if (const std::string name = CutAtLetter(Readable(entry.name), longestLibraryName);
        !name.empty())
        json["name"] = name;
    if (note.added)
        json["added"] = *note.added;
    if (note.lastPlayed)
        json["lastPlayed"] = *note.lastPlayed;
    if (note.secondsPlayed != 0)
        json["secondsPlayed"] = note.secondsPlayed;
    if (note.status != LevelStatus::New)
        json["status"] = WordOf(note.status);
    if (note.stars != 0)
        json["stars"] = note.stars;
    if (!note.tags.empty())
        json["tags"] = note.tags;
    if (!note.ownNote.empty())
        json["note"] = note.ownNote;
    if (!note.cover.empty())
        json["cover"] = Encoded(note.cover);
    return json;
}

} // namespace

std::string_view WordOf(LevelStatus status)
{
    return statusWords[static_cast<std::size_t>(status)].second;
}

std::optional<LevelStatus> StatusFromWord(std::string_view word)
{
    for (const auto& [status, known] : statusWords)
        if (known == word)
            return status;
    return std::nullopt;
}

bool IsSameTag(std::string_view a, std::string_view b)
{
    return FoldCase(TidyTag(a)) == FoldCase(TidyTag(b));
}

void MakeTidy(LevelNote& note)
{
    const auto bound = [](std::optional<std::int64_t>& seconds) {
        if (seconds)
            seconds = std::clamp<std::int64_t>(*seconds, 0, lastSecond);
    };
    bound(note.added);
    bound(note.lastPlayed);
    note.secondsPlayed = std::clamp<std::int64_t>(note.secondsPlayed, 0, mostSeconds);
    note.stars = std::clamp(note.stars, 0, mostStars);
    note.tags = TidyTags(note.tags);
    note.ownNote = TidyText(note.ownNote);
    if (!IsCover(note.cover))
        note.cover.clear();
}

std::string FormatLibrary(const LibraryFile& library)
{
    NoteJson head = Object(library.others);
    if (!head.contains("version"))
        head["version"] = 1;
    std::string text = Dumped(head);
    text.back() = ',';
    text += "\"levels\":[";
    const char* between = "\n";
    for (const LibraryEntry& entry : library.levels)
        text += std::exchange(between, ",\n") + Dumped(JsonOf(entry));
    for (const std::string& entry : library.damaged)
        text += std::exchange(between, ",\n") + entry;
    return text + "\n]}\n";
}

Result<LibraryFile> ParseLibrary(std::string_view text)
{
    const Failure damaged{ErrorCode::Damaged, {}, {}};
    if (text.size() > longestLibrary || !IsShallow(text))
        return damaged;
    NoteJson json = ParseNote(text);
    if (!json.is_object() || !json.contains("levels") || !json["levels"].is_array() ||
        json["levels"].size() > mostEntries)
        return damaged;
    LibraryFile library;
    library.levels.reserve(json["levels"].size());
    for (NoteJson& object : json["levels"]) {
        LibraryEntry entry;
        if (TakeEntry(object, entry))
            library.levels.push_back(std::move(entry));
        else
            library.damaged.push_back(Dumped(object));
    }
    json.erase("levels");
    if (json.contains("version") && json["version"] == 1)
        json.erase("version");
    if (!json.empty())
        library.others = Dumped(json);
    return library;
}

} // namespace kestrova
