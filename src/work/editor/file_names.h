#pragma once

#include <string_view>

// clang-format off

/// Names of files, folders and kinds that this floor alone uses.
namespace kestrova::OnDisk
{

inline constexpr std::string_view FragScriptExe = "\\script\\script.exe";
inline constexpr std::string_view ScriptTxt = "script.txt";
inline constexpr std::string_view PatScriptResults = "\\script\\*.dat";

} // namespace kestrova::OnDisk
