#pragma once

#include <string_view>

// clang-format off

/// Names of files, folders and kinds that this floor alone uses.
namespace kestrova::OnDisk
{

inline constexpr std::string_view DoctorToolOpen = "xdg-open";

} // namespace kestrova::OnDisk
