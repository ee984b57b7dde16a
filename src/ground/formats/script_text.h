#pragma once

#include "core/result.h"

#include <string>
#include <string_view>
#include <vector>

/// The source of the game's list of levels, `script.txt`.
///
///     header      all lines ahead of the first [Level]
///     block       a line [Level] and what stands up to the next one, or to the end:
///       Name= Tomb of X              the first "Name=" of the block, blanks and tabs behind it
///       gone Level= DATA\city,101         behind the first "Level=" and the first backslash behind
///       that:
///                                    up to the line's end or a comma, the level's file without
///                                    .tr4
///
/// The first of them counts wherever it stands in the block, in a comment too, as the Level Editor
/// has it. Case does not matter. Bytes and line ends: `formats/source_text.h`.
namespace kestrova
{

namespace OnDisk
{
inline constexpr std::string_view HeadingLevel = "[Level]";
} // namespace OnDisk

struct ScriptLevel {
    std::string tr4Name; ///< `city.tr4`
    std::string levelName;
    std::string block; ///< with its heading, each line with CR LF
    bool operator==(const ScriptLevel&) const = default;
};

struct ScriptText {
    std::string header; ///< each line with CR LF, a mark of UTF-8 in front
    std::vector<ScriptLevel> levels;
    bool operator==(const ScriptText&) const = default;
};

/// The names that a block says. `Damaged`, with the reason in words, when it lacks one of them.
Result<ScriptLevel> ParseScriptBlock(std::string block);
/// `Damaged` when one block lacks a name: nothing of such a file is used. `Refused` for what is no
/// text of single bytes. A text without any `[Level]` has no levels and is all header.
Result<ScriptText> ParseScriptText(std::string_view bytes);
/// The header and the blocks as they stand.
std::string FormatScriptText(const ScriptText& script);

} // namespace kestrova
