#pragma once

#include <string_view>

// clang-format off

/// Names of files, folders and kinds that this floor alone uses.
namespace kestrova::OnDisk
{

inline constexpr std::string_view FileNameWindowState = "windows.ini";
/// Dropped on a window, they belong to the chosen level: they make no level of their own.
inline constexpr std::string_view PatternsNoLevel = "*.jpg|*.jpeg|*.bmp|*.png|savegame.*";
inline constexpr std::string_view FileNameAppIcon = "kestrova.svg";
inline constexpr std::string_view CoverExtension = ".jpg";
inline constexpr std::string_view CoverUnfinished = ".new-";
inline constexpr std::string_view DirCovers = "\\kestrova\\covers";
inline constexpr std::string_view DocumentKinds = ".txt|.htm|.html|.doc|.rtf|.pdf";
inline constexpr std::string_view PictureKinds = ".jpg|.jpeg|.bmp|.png|.gif";
inline constexpr std::string_view FileNameSplash = "splash.jpg";
inline constexpr std::string_view PracticeFolderName = "kestrova-practice";

} // namespace kestrova::OnDisk
