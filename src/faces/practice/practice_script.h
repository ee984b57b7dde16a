#pragma once

#include <string>
#include <string_view>

/// The practice levels' `script.dat`, which the stand-in game reads: the mark, the level's title in
/// Windows-1252, a NUL, then bytes that nobody reads.
namespace kestrova
{

inline constexpr std::string_view practiceScriptMark = "KVPRACTICE";

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

} // namespace kestrova
