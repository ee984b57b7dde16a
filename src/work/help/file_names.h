#pragma once

#include <string_view>

// clang-format off

/// Names of files that this floor alone uses.
namespace kestrova::OnDisk
{

inline constexpr std::string_view FragHelp = "\\help_kestrova.txt";

} // namespace kestrova::OnDisk
