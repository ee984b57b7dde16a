#include "formats/tool_listing.h"

#include "core/text.h"

#include <algorithm>
#include <optional>

namespace kestrova
{

namespace
{

constexpr std::string_view blanks = " \t";

/// The next line without its end, and `text` behind it.
std::string_view TakeLine(std::string_view& text)
{
    const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

/// The next word, and `line` behind it.
std::string_view TakeWord(std::string_view& line)
{
    line.remove_prefix(std::min(line.find_first_not_of(blanks), line.size()));
    const std::string_view word = line.substr(0, line.find_first_of(blanks));
    line.remove_prefix(word.size());
    return word;
}

bool IsHead(std::string_view line)
{
    for (const std::string_view column : {"Length", "Date", "Time", "Name"})
        if (TakeWord(line) != column)
            return false;
    return true;
}

/// An entry holds digits, so no name can look like this.
bool IsDashed(std::string_view line)
{
    return line.ends_with("----") && line.find_first_not_of("- ") == std::string_view::npos;
}

bool IsOctal(char c)
{
    return c >= '0' && c <= '7';
}

/// The bytes that a printed name stands for.
std::string Unescaped(std::string_view printed)
{
    constexpr std::string_view letters = "abfnrtv\\";
    constexpr std::string_view meant = "\a\b\f\n\r\t\v\\";
    constexpr std::size_t octalDigits = 3;
    std::string name;
    name.reserve(printed.size());
    while (!printed.empty()) {
        std::size_t taken = 1;
        char byte = printed.front();
        if (byte == '\\' && printed.size() > octalDigits && IsOctal(printed[1]) &&
            IsOctal(printed[2]) && IsOctal(printed[3])) {
            byte = static_cast<char>((printed[1] - '0') << 6 | (printed[2] - '0') << 3 |
                                     (printed[3] - '0'));
            taken += octalDigits;
        } else if (byte == '\\' && printed.size() > 1) {
            if (const auto letter = letters.find(printed[1]); letter != std::string_view::npos) {
                byte = meant[letter];
                ++taken;
            }
        }
        name += byte;
        printed.remove_prefix(taken);
    }
    return name;
}

/// A link's name without where it leads: a `kind` of `l` or `h`.
std::string_view WithoutTarget(std::string_view name, char kind)
{
    constexpr std::string_view hardLink = " link to "; // not shown
    const std::string_view between = kind == 'l' ? " -> " : kind == 'h' ? hardLink : "";
    return between.empty() ? name : name.substr(0, name.rfind(between));
}

} // namespace

std::vector<PackageEntry> ParseZipListing(std::string_view text)
{
    constexpr std::string_view beforeName = "   ";
    std::vector<PackageEntry> entries;
    while (!text.empty() && !IsHead(TakeLine(text)))
        ;
    while (!text.empty() && !IsDashed(TakeLine(text)))
        ;
    while (!text.empty()) {
        std::string_view line = TakeLine(text);
        if (IsDashed(line))
            break;
        const auto size = WholeNumber<std::uint64_t>(TakeWord(line));
        TakeWord(line);
        TakeWord(line);
        if (size && line.starts_with(beforeName))
            entries.push_back({std::string{line.substr(beforeName.size())}, *size});
    }
    return entries;
}

std::vector<PackageEntry> ParseTarListing(std::string_view text)
{
    constexpr int wordsBeforeSize = 4;
    constexpr int wordsOfDate = 3;
    std::vector<PackageEntry> entries;
    while (!text.empty()) {
        std::string_view line = TakeLine(text);
        const char kind = line.empty() ? ' ' : line.front();
        for (int i = 0; i < wordsBeforeSize; ++i)
            TakeWord(line);
        auto size = WholeNumber<std::uint64_t>(TakeWord(line));
        if (kind == 'b' || kind == 'c')
            size = 0; // a device has two numbers there
        for (int i = 0; i < wordsOfDate; ++i)
            TakeWord(line);
        if (size && line.size() > 1)
            entries.push_back({Unescaped(WithoutTarget(line.substr(1), kind)), *size});
    }
    return entries;
}

} // namespace kestrova
