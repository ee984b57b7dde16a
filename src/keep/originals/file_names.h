#pragma once

#include <string_view>

// clang-format off

/// Names of files and folders that this floor alone uses.
namespace kestrova::OnDisk
{

inline constexpr std::string_view FragImport = "\\swap\\import";
inline constexpr std::string_view EndingImport = ".json";
inline constexpr std::string_view PatImports = "*.json";
/// What a person writes for a program to compile.
inline constexpr std::string_view EndingSource = ".txt";
/// Of the folder of what is aside while a folder is lent.
inline constexpr std::string_view DirRest = "rest";

} // namespace kestrova::OnDisk
