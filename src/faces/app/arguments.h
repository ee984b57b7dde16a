#pragma once

#include "core/names.h"
#include "formats/archive_file.h"
#include "words/message.h"

#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// What stands behind the program's name, taken apart. Options stand before or behind the command.
namespace kestrova
{

struct OptionRow {
    std::string_view name; ///< `--home`
    bool takesValue = false;
    bool repeats = false; ///< may stand more than once
    bool isPlace = false; ///< its value is a path, and so never empty
};

constexpr OptionRow FlagOption(std::string_view name)
{
    return {name};
}
constexpr OptionRow ValueOption(std::string_view name)
{
    return {name, true};
}
constexpr OptionRow PlaceOption(std::string_view name)
{
    return {name, true, false, true};
}

struct Arguments {
    std::string command; ///< empty when there is none
    std::vector<std::string> words;
    std::map<std::string, std::vector<std::string>, std::less<>> options;
    std::string wrong; ///< what is wrong, in words; empty when nothing is

    [[nodiscard]] bool Has(std::string_view option) const { return options.contains(option); }
    /// Empty when the option is not there.
    [[nodiscard]] std::string ValueOf(std::string_view option) const;
    /// All values of an option that may be repeated, in their order.
    [[nodiscard]] std::vector<std::string> ValuesOf(std::string_view option) const;
};

/// `known`: every option of every command. `--name value` and `--name=value`; a single `--` ends
/// the options. Stops at the first wrong word.
Arguments ParseArguments(const std::vector<std::string>& items, std::span<const OptionRow> known);

/// A level's number; no value when the word is none.
std::optional<LevelCode> CodeFromWord(const std::string& word);
/// What is wrong with a level's number; empty when nothing is.
std::string WrongCodeIn(const std::string& word);
/// Absolute and tidied; relative words count from the working folder.
Path PlaceFromWord(const std::string& word);

} // namespace kestrova
