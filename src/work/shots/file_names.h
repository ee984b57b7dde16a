#pragma once

#include <string_view>

// clang-format off

/// Names of files, folders and kinds that this floor alone uses.
namespace kestrova::OnDisk
{

inline constexpr std::string_view FragDefaultScreenshot = "\\screenshots\\Tomb Raider Level Editor.bmp";
inline constexpr std::string_view ShotJpgExtension = ".jpg";
inline constexpr std::string_view ShotBmpExtension = ".bmp";
inline constexpr std::string_view ShotNumberEnds = ") ";

} // namespace kestrova::OnDisk
