#include "formats/exact_names.h"

#include "core/text.h"
#include "formats/record_json.h"

#include <algorithm>

namespace kestrova
{

namespace
{

constexpr std::size_t mostExactNames = 200'000;

struct Field {
    const char* name;
    std::string LevelRecord::*text;
    std::size_t width; ///< bytes of the record, which are letters of the text
};

constexpr Field fields[] = {
    {"name", &LevelRecord::levelName, 256},       {"note", &LevelRecord::levelNote, 256},
    {"author", &LevelRecord::authorName, 80},     {"authorNote", &LevelRecord::authorNote, 256},
    {"emails", &LevelRecord::authorEmails, 256},  {"sites", &LevelRecord::authorSites, 256},
    {"document", &LevelRecord::moreInfoFile, 256}};

std::string RecordForm(std::string_view text, std::size_t width)
{
    const std::string bytes = ToWindows1252(text);
    return FromWindows1252(TrimEnd(std::string_view{bytes}.substr(0, width)));
}

/// As much of a text as its field has room for.
std::string Cut(std::string_view text, std::size_t letters)
{
    std::size_t end = 0;
    for (; end < text.size(); ++end) {
        const bool begins = (static_cast<unsigned char>(text[end]) & 0xC0U) != 0x80U;
        if (begins && letters-- == 0)
            break;
    }
    return std::string{TrimEnd(text.substr(0, end))};
}

bool NeedsExactForm(std::string_view text)
{
    return std::any_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) >= 0x80; }) &&
           !FitsWindows1252(text) && IsUtf8(text);
}

void TakeLine(std::string_view line, ExactNames& names)
{
    const NoteJson json = ParseNote(line);
    if (!json.is_object() || !json.contains("code") || !json["code"].is_number_integer() ||
        !json.contains("field") || !json["field"].is_string() || !json.contains("text") ||
        !json["text"].is_string())
        return;
    const auto code = json["code"].get<std::int64_t>();
    const auto& name = json["field"].get_ref<const std::string&>();
    const auto field = std::find_if(std::begin(fields), std::end(fields),
                                    [&](const Field& known) { return known.name == name; });
    if (code < 0 || code > std::numeric_limits<LevelCode>::max() || field == std::end(fields))
        return;
    std::string text = Cut(json["text"].get_ref<const std::string&>(), field->width);
    if (!NeedsExactForm(text))
        return;
    const auto place = static_cast<std::size_t>(field - std::begin(fields));
    ExactKey key{static_cast<LevelCode>(code), place, RecordForm(text, field->width)};
    names[std::move(key)] = std::move(text);
}

} // namespace

ExactNames ParseExactNames(std::string_view bytes)
{
    ExactNames names;
    while (!bytes.empty() && names.size() < mostExactNames) {
        const std::size_t end = std::min(bytes.find('\n'), bytes.size());
        TakeLine(bytes.substr(0, end), names);
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
    }
    return names;
}

std::string FormatExactNames(const ExactNames& names)
{
    std::string bytes;
    for (const auto& [key, text] : names)
        bytes += WrittenLine(
            {{"code", std::get<0>(key)}, {"field", fields[std::get<1>(key)].name}, {"text", text}});
    return bytes;
}

void ApplyExactNames(const ExactNames& names, std::vector<LevelRecord>& levels)
{
    for (LevelRecord& level : levels)
        for (std::size_t place = 0; place < std::size(fields); ++place) {
            std::string& text = level.*fields[place].text;
            if (text.find('?') == std::string::npos)
                continue;
            const auto found = names.find({level.levelCode, place, text});
            if (found != names.end())
                text = found->second;
        }
}

bool MergeExactNames(ExactNames& names, const std::vector<LevelRecord>& levels)
{
    ExactNames needed;
    for (const LevelRecord& level : levels)
        for (std::size_t place = 0; place < std::size(fields); ++place)
            if (const std::string& text = level.*fields[place].text; NeedsExactForm(text))
                needed[{level.levelCode, place, RecordForm(text, fields[place].width)}] =
                    Cut(text, fields[place].width);
    bool changed = false;
    for (const auto& [key, text] : needed) {
        const auto [known, isNew] = names.try_emplace(key, text);
        changed = changed || isNew || known->second != text;
        known->second = text;
    }
    if (names.size() > mostExactNames)
        names = std::move(needed);
    return changed;
}

} // namespace kestrova
