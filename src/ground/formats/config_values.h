#pragma once

#include <string_view>

// clang-format off

/// What stands in fields of a level's configuration file (`formats/level_config.h`) that have a
/// choice of words, parted by `|`.
namespace kestrova::OnDisk
{

/// Where an extern wave comes from.
inline constexpr std::string_view ConfigCdCodes = "<NONE>|TR4|TR5";
/// Kinds of installers; the first is none.
inline constexpr std::string_view ConfigExeFormats = "|ZIP|TRLE|MIRROR|FLYDRIVE";
inline constexpr std::string_view ExeZip = "ZIP";           ///< unpacks itself
inline constexpr std::string_view ExeTrle = "TRLE";         ///< into the Level Editor's folder
inline constexpr std::string_view ExeFlyDrive = "FLYDRIVE"; ///< into it, too

} // namespace kestrova::OnDisk
