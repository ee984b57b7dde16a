#pragma once

#include <string_view>

// clang-format off

/// Names of files, folders and kinds that this floor alone uses.
namespace kestrova::OnDisk
{

inline constexpr std::string_view MailScheme = "mailto:";
inline constexpr std::string_view WebScheme = "http://";
inline constexpr std::string_view WebSchemes = "http://|https://|ftp://";

} // namespace kestrova::OnDisk
