#pragma once

#include "core/result.h"

#include <string>
#include <string_view>
#include <vector>

/// The source of the game's strings in one language, `english.txt`.
///
///     before      all lines ahead of [Strings]
///     strings     the line [Strings] and what stands up to [PSXStrings], empty lines and lines
///     that
///                 begin with ";" left out
///     after       the line [PSXStrings] and all behind it
///
/// The game refers to a string by its position, the heading's being 0, so that two languages can be
/// held against each other line by line. Bytes and line ends: `formats/source_text.h`.
namespace kestrova
{

namespace OnDisk
{
inline constexpr std::string_view HeadingStrings = "[Strings]";
inline constexpr std::string_view HeadingPsxStrings = "[PSXStrings]";
} // namespace OnDisk

struct LanguageText {
    std::string before; ///< each line with CR LF, comments with them, a mark of UTF-8 in front
    std::vector<std::string> strings;
    std::string after; ///< as `before`
    bool operator==(const LanguageText&) const = default;
};

/// `Refused` for what is no text of single bytes. Without the heading `[Strings]` there are no
/// strings.
Result<LanguageText> ParseLanguageText(std::string_view bytes);
std::string FormatLanguageText(const LanguageText& language);

} // namespace kestrova
