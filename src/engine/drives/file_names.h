#pragma once

#include <string_view>

// clang-format off

/// Names of files, folders and kinds that this floor alone uses.
namespace kestrova::OnDisk
{

inline constexpr std::string_view FragInserted = "\\~1.drive";
inline constexpr std::string_view EndingInserted = ".drive";
inline constexpr std::string_view FragDiscsLock = "\\discs\\lock";
inline constexpr std::string_view DirSeen = "\\discs\\seen";
inline constexpr std::string_view FragSeenNote = "\\note";
inline constexpr std::string_view FragSeenDisc = "\\disc";

} // namespace kestrova::OnDisk
