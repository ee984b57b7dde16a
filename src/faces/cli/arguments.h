#pragma once

#include <map>
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
};

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

} // namespace kestrova
