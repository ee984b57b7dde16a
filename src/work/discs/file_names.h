#pragma once

#include <string_view>

// clang-format off

/// Names of files, folders and labels that this floor alone uses.
namespace kestrova::OnDisk
{

inline constexpr std::string_view DiscLabel = "Kestrova #~1";
inline constexpr std::string_view PatLevelFolders = "LEVEL_????*";
inline constexpr std::string_view PatImages = "*.iso";

} // namespace kestrova::OnDisk
