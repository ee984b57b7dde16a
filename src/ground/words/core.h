#pragma once

#include "words/message.h"

// clang-format off

/// Files, sizes, the activity log.
namespace kestrova::Msg
{

inline constexpr Message AndMoreFiles{"and ~1 more"};
inline constexpr Message NameLeftPart{" … "};
inline constexpr Message DriveWithoutRoom{"Drive [~1] has not sufficient free space for setup files ("};
inline constexpr Message ErrorCopyingFromTo{"Error while copying file from: ~1 to: "};
inline constexpr Message SizeGb{" Gb"};
inline constexpr Message SizeMb{" Mb"};
inline constexpr Message SizeKb{" Kb"};
inline constexpr Message SizeDecimal{"~1.~2"};
inline constexpr Message SizeGigabytes{"~1 GB"};
inline constexpr Message SizeMegabytes{"~1 MB"};
inline constexpr Message SizeKilobytes{"~1 KB"};
inline constexpr Message SizeBytes{"~1 bytes"};
inline constexpr Message SizeOneByte{"1 byte"};
inline constexpr Message LogCopy{"COPY "};
inline constexpr Message LogCopyAll{"COPYALL "};
inline constexpr Message LogDeleteDir{"DELETE DIR "};
inline constexpr Message LogDelete{"DELETE -> "};
inline constexpr Message LogArrow{" -> "};
inline constexpr Message LogOk{" [OK]"};
inline constexpr Message LogError{" [ERROR]"};
inline constexpr Message LogOverwrite{" [OVERWRITE]"};

} // namespace kestrova::Msg
