#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// What the practice folder's game reads and its compiler of scripts writes. The stand-ins are
/// programs of their own, for Windows too, so this stands on the standard library alone.
///
/// `script.dat`: the mark, the title that the game shows in Windows-1252, a NUL, bytes that nobody
/// reads, then a line `NAME|LEVEL` for each level. A language's `.dat`: a head, then the source's
/// text, veiled.
namespace kestrova
{

inline constexpr std::string_view practiceScriptMark = "KVPRACTICE";
/// A comment of `script.txt`: the title that the game shows.
inline constexpr std::string_view practiceTitleTag = ";title=";

inline std::string PracticeScript(std::string_view title)
{
    std::string bytes{practiceScriptMark};
    bytes += title;
    bytes += '\0';
    for (unsigned i = 0; i < 1500; ++i)
        bytes += static_cast<char>(i * i % 251 & (i % 7 == 0 ? 0xFFU : 0x0FU));
    return bytes;
}

/// Empty for a script that is none of these.
inline std::string PracticeTitle(std::string_view bytes)
{
    if (!bytes.starts_with(practiceScriptMark))
        return {};
    const std::string_view title = bytes.substr(practiceScriptMark.size(), 74);
    return std::string{title.substr(0, title.find('\0'))};
}

/// What stands behind the tag in its line, without the blanks in front; empty for another line.
inline std::string_view PracticeValue(std::string_view line, std::string_view tag)
{
    const auto small = [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + ('a' - 'A')) : letter;
    };
    if (line.size() < tag.size())
        return {};
    for (std::size_t i = 0; i < tag.size(); ++i)
        if (small(line[i]) != tag[i])
            return {};
    line.remove_prefix(tag.size());
    while (!line.empty() && (line.front() == ' ' || line.front() == '\t'))
        line.remove_prefix(1);
    return line;
}

/// Takes the next line off the text, whichever ending it has.
inline std::string_view TakePracticeLine(std::string_view& text)
{
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    return line;
}

/// `script.dat` of a `script.txt`: without a title of its own it has the first level's name.
inline std::string CompiledPracticeScript(std::string_view text)
{
    std::string title;
    std::string name;
    std::string levels;
    while (!text.empty()) {
        const std::string_view line = TakePracticeLine(text);
        if (const auto value = PracticeValue(line, practiceTitleTag); !value.empty())
            title = value;
        if (const auto value = PracticeValue(line, "name="); !value.empty())
            name = value;
        const auto level = PracticeValue(line, "level=");
        if (level.empty() || name.empty())
            continue;
        if (title.empty())
            title = name;
        levels += name + '|' + std::string{level} + '\n';
        name.clear();
    }
    return PracticeScript(title) + levels;
}

/// A language's `.dat` of its source.
inline std::string CompiledPracticeLanguage(std::string_view text)
{
    std::string bytes{"\x01\x00\x20\x00", 4};
    for (const char letter : text)
        bytes += static_cast<char>(letter ^ 0x55);
    return bytes;
}

} // namespace kestrova
