#pragma once

#include "formats/level_config.h"

#include <span>

/// The fields of a level's configuration file as a person names them in the terminal.
namespace kestrova
{

/// A field of the file: its name here, its width there, and how many texts make one of its groups.
struct ConfigField {
    std::string_view name;
    std::string LevelConfig::*field;
    std::size_t width;
    std::size_t group = 0; ///< 0: one text; 1: a list; above: a list of groups
};
std::span<const ConfigField> ConfigFields();
/// Parts the texts of one group.
inline constexpr char fieldPartMark = '|';

/// A word `FIELD=TEXT` taken apart.
struct FieldWord {
    const ConfigField& field;
    std::string text;               ///< on one line
    std::vector<std::string> parts; ///< of a group; otherwise the text alone
};
/// A failure's sentence says what is wrong with the word.
Result<FieldWord> ReadFieldWord(const std::string& word);

} // namespace kestrova
