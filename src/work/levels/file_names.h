#pragma once

#include <string_view>

// clang-format off

/// Names of files, folders and kinds that this floor alone uses.
namespace kestrova::OnDisk
{

inline constexpr std::string_view ExportDefaultName = "TR_Level_~1.zip";
inline constexpr std::string_view MoreInfoPatterns = "*.jpg|*.gif|*.htm|*.html";
inline constexpr std::string_view FragManual = "\\manual";
inline constexpr std::string_view FragOriginalShot = "\\Tomb Raider Level Editor.bmp";
inline constexpr std::string_view EndingBak = ".bak";
inline constexpr std::string_view PatDatBak = "*.dat.bak";

} // namespace kestrova::OnDisk
