#pragma once

#include <string_view>

// clang-format off

/// Names of files, folders and kinds that this floor alone uses.
namespace kestrova::OnDisk
{

inline constexpr std::string_view WinePrefixVariable = "WINEPREFIX";
inline constexpr std::string_view WineDriveFolder = "drive_c";

inline constexpr std::string_view WineRootDrive = "Z:";
/// What Wine starts for itself; it goes away by itself.
inline constexpr std::string_view WineHelpers = "wineserver|services.exe|explorer.exe|winedevice.exe|plugplay.exe|svchost.exe|rpcss.exe|conhost.exe";
inline constexpr std::string_view RunMarkVariable = "KESTROVA_RUN";

} // namespace kestrova::OnDisk
