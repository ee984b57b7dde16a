#include "app/config_fields.h"

#include "core/text.h"
#include "formats/config_values.h"
#include "words/config_commands.h"

#include <algorithm>

namespace kestrova
{

namespace
{

constexpr std::size_t longestTomWads = 32767;
constexpr ConfigField fields[] = {
    {"name", &LevelConfig::name, 256},
    {"note", &LevelConfig::note, 256},
    {"author", &LevelConfig::author, 80},
    {"author-note", &LevelConfig::authorNote, 256},
    {"email", &LevelConfig::authorEmails, 256, 1},
    {"site", &LevelConfig::authorSites, 256, 1},
    {"extern-wave", &LevelConfig::externWaves, 4096, 4},
    {"import-wad", &LevelConfig::importWads, 2048, 2},
    {"import-notes", &LevelConfig::importNotes, 512},
    {"duplicate", &LevelConfig::duplicates, 600, 2},
    {"more-info", &LevelConfig::moreInfo, 80},
    {"exe-format", &LevelConfig::exeFormat, 10},
    {"tom-wads", &LevelConfig::tomWads, longestTomWads, 2},
};

std::string AllFieldNames()
{
    std::vector<std::string> names;
    for (const ConfigField& field : fields)
        names.emplace_back(field.name);
    return Join(names, ", ");
}

Failure WrongWord(std::string words)
{
    return InWords(ErrorCode::Refused, std::move(words));
}

} // namespace

std::span<const ConfigField> ConfigFields()
{
    return fields;
}

Result<FieldWord> ReadFieldWord(const std::string& word)
{
    const std::size_t equals = word.find('=');
    const std::string_view name = std::string_view{word}.substr(0, equals);
    const auto* row = std::find_if(std::begin(fields), std::end(fields),
                                   [&](const ConfigField& field) { return field.name == name; });
    if (equals == std::string::npos || row == std::end(fields))
        return WrongWord(GetMsg(Msg::WrongConfigField, {word, AllFieldNames()}));
    const std::string text = OnOneLine(Readable(std::string_view{word}.substr(equals + 1)));
    std::vector<std::string> parts{text};
    if (row->group > 1)
        parts = Split(text, fieldPartMark);
    if (row->group > 1 && parts.size() != row->group)
        return WrongWord(
            GetMsg(Msg::WrongConfigParts, {text, row->name, std::to_string(row->group)}));
    if (row->field == &LevelConfig::exeFormat) {
        const std::vector<std::string> known = Split(OnDisk::ConfigExeFormats, '|');
        if (std::find(known.begin(), known.end(), text) == known.end())
            return WrongWord(
                GetMsg(Msg::WrongConfigExe, {text, Join({known.begin() + 1, known.end()}, ", ")}));
    }
    return FieldWord{*row, text, std::move(parts)};
}

} // namespace kestrova
