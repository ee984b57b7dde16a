#pragma once

#include <string_view>

// clang-format off

/// Names of what a setup of the Level Editor holds, makes and leaves.
namespace kestrova::OnDisk
{

inline constexpr std::string_view SetupList = "\\list.txt";
inline constexpr std::string_view SetupListPrefix = "trle/";
inline constexpr std::string_view SetupMaker = "Core Design"; // not shown
inline constexpr std::string_view SetupUnpacked = "unpacked";
inline constexpr std::string_view SetupLoadBmp = "\\load.bmp";
inline constexpr std::string_view PatJpg = "*.jpg";
inline constexpr std::string_view EndingJpg = ".jpg";
inline constexpr std::string_view PatMp3 = "*.mp3";
inline constexpr std::string_view DirManual = "\\manual";
inline constexpr std::string_view SetupManualFolder = "manual/";
inline constexpr std::string_view RoomEditor = "\\winroomedit.exe";
inline constexpr std::string_view FragConverter = "\\tom2pc.exe";
inline constexpr std::string_view WebLinkMaker = "Core Design.url.tmp"; // not shown
inline constexpr std::string_view WebLinkPublisher = "Eidos Interactive.url.tmp"; // not shown
inline constexpr std::string_view GameSetupWord = "-setup";
inline constexpr std::string_view FolderApplications = "applications";
inline constexpr std::string_view EndingDesktop = ".desktop";
inline constexpr std::string_view OpenCommand = "xdg-open";
inline constexpr std::string_view EnvironmentCommand = "env";
inline constexpr std::string_view PrefixVariable = "WINEPREFIX=";
inline constexpr std::string_view RegistryTool = "reg";
inline constexpr std::string_view FragSetupNote = "\\swap\\setup";
inline constexpr std::string_view AppPathsOfMachine = "HKLM\\Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\winroomedit.exe"; // not shown

} // namespace kestrova::OnDisk
