#pragma once

#include <string_view>

// clang-format off

/// Words in what the tools print that tell why they failed, any of them, parted by `|`.
namespace kestrova::ToolSays
{

inline constexpr std::string_view Names = "cannot be converted|: (null)"; // not shown
inline constexpr std::string_view LeadsOut = "contains '..'|through symlink"; // not shown
inline constexpr std::string_view Clash = "exists but is not directory|cannot delete old"; // not shown
inline constexpr std::string_view Full = "no space left|disk full"; // not shown
inline constexpr std::string_view Locked = "passphrase|password|encrypt";
inline constexpr std::string_view Unknown = "unsupported";

} // namespace kestrova::ToolSays
