#pragma once

#include "core/text.h"
#include "formats/archive_file.h"

#include <string>
#include <string_view>
#include <vector>

/// `Kestrva.txt` in the root of the Level Editor's folder: which level stands there, which files it
/// brought, which of them replaced an original. Text in Windows-1252, lines ended by CRLF:
///
///     : Don't remove this file!
///     : It is necessary at Kestrova
///     : to know current configuration in TRLE
///      (a single blank)
///     #LEVEL_CODE=0012#
///     #LEVEL_NAME=…#
///     #OVERWROTEN_FILES=\script.dat|\data\level1.tr4#
///     #COPIED_FILES=\script.dat|\data\level1.tr4|\audio\107.wav#
///
/// A tag counts at its line's start only, so that no level's name holds one; a value ends at the
/// next `#`.
namespace kestrova
{

inline constexpr std::string_view tagLevelCode = "#LEVEL_CODE=";
inline constexpr std::string_view tagLevelName = "#LEVEL_NAME=";
inline constexpr std::string_view tagOverwritten = "#OVERWROTEN_FILES=";
inline constexpr std::string_view tagCopied = "#COPIED_FILES=";

/// The value behind a tag (compared without regard to case), trimmed; empty when it is absent.
std::string MarkerValue(std::string_view tag, std::string_view text);
/// Lines 1 to 6, as they stand while an installation is under way.
std::string MarkerHead(LevelCode code, const std::string& name);
/// The whole marker.
std::string MarkerText(LevelCode code, const std::string& name,
                       const std::vector<std::string>& overwritten,
                       const std::vector<std::string>& copied);

struct MarkerContent {
    bool hasText = false;
    LevelCode code = -1; ///< -1: no code in it
    std::vector<std::string> overwritten;
    std::vector<std::string> copied;
};
MarkerContent ParseMarker(std::string_view text);

} // namespace kestrova
