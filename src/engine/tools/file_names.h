#pragma once

#include <string_view>

// clang-format off

/// Names of files, folders and kinds that this floor alone uses.
namespace kestrova::OnDisk
{

inline constexpr std::string_view WinePrefixVariable = "WINEPREFIX";
inline constexpr std::string_view WineDriveFolder = "drive_c";
inline constexpr std::string_view WineDrivesFolder = "dosdevices";
inline constexpr std::string_view WineUsualPrefix = ".wine";
/// What leads a path that lies on no drive.
inline constexpr std::string_view WineNoDrive = "\\\\?\\unix";
inline constexpr std::string_view WinePathTool = "winepath";
inline constexpr std::string_view WineShort = "-s";
inline constexpr std::string_view LocaleVariable = "LC_ALL";
inline constexpr std::string_view Utf8Locale = "C.UTF-8";

/// What Wine starts for itself; it goes away by itself.
inline constexpr std::string_view WineHelpers = "wineserver|wineserver64|wineserver32|wineboot.exe|winemenubuilder|services.exe|explorer.exe|winedevice.exe|plugplay.exe|svchost.exe|rpcss.exe|conhost.exe";
inline constexpr std::string_view WineServers = "wineserver*";
/// Where Wine's servers lie: those of a user, of a prefix, and what one holds locked while it runs.
inline constexpr std::string_view WineServersFolder = "/tmp/.wine-";
inline constexpr std::string_view WineServerFolder = "server-";
inline constexpr std::string_view WineServerLock = "lock";
inline constexpr std::string_view EncloserName = "bwrap";
inline constexpr std::string_view TrialProgram = "true";
inline constexpr std::string_view SystemShell = "/bin/sh";
inline constexpr std::string_view ProgramsFolder = "bin";
/// Where people keep what is theirs, and where their programs talk to each other.
inline constexpr std::string_view HiddenFolders = "/home|/root|/media|/mnt|/run|/srv|/tmp|/var/tmp";
/// Those inside are its own.
inline constexpr std::string_view DeviceFolder = "/dev";
/// A window's way to the screen, and the key to it.
inline constexpr std::string_view ScreenFolder = "/tmp/.X11-unix";
inline constexpr std::string_view ScreenKeyVariable = "XAUTHORITY";
inline constexpr std::string_view ScreenKeyName = ".Xauthority";
inline constexpr std::string_view RunMarkVariable = "KESTROVA_RUN";
/// The folder of the Kestrova that started the run.
inline constexpr std::string_view RunOwnerVariable = "KESTROVA_RUN_FOR";

} // namespace kestrova::OnDisk
