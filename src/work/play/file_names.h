#pragma once

#include <string_view>

// clang-format off

/// Names of files, folders and kinds that this floor alone uses.
namespace kestrova::OnDisk
{

inline constexpr std::string_view ToolProgram = "brivanta.exe";
inline constexpr std::string_view CaptureTypes = "13";

} // namespace kestrova::OnDisk
