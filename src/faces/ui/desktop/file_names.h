#pragma once

#include <string_view>

// clang-format off

/// Names of files, folders and kinds that this floor alone uses.
namespace kestrova::OnDisk
{

inline constexpr std::string_view FileNameWindowState = "windows.ini";
inline constexpr std::string_view FileNameAppIcon = "kestrova.svg";
inline constexpr std::string_view CoverExtension = ".jpg";
inline constexpr std::string_view CoverUnfinished = ".new-";
inline constexpr std::string_view DirCovers = "\\kestrova\\covers";
inline constexpr std::string_view ReadableKinds = ".txt|.htm|.html|.doc|.rtf|.pdf|.jpg|.jpeg|.bmp|.png|.gif";
inline constexpr std::string_view FileNameSplash = "splash.jpg";
inline constexpr std::string_view PracticeFolderName = "kestrova-practice";

} // namespace kestrova::OnDisk
