#pragma once

#include <string_view>

// clang-format off

/// Names of files, folders and kinds that this floor alone uses.
namespace kestrova::OnDisk
{

inline constexpr std::string_view FragKeptRecord = "\\record";
inline constexpr std::string_view EndingKeptTarget = ".target";
inline constexpr std::string_view EndingKeptFile = ".was";
inline constexpr std::string_view EndingTar = ".tar";
inline constexpr std::string_view EveryEnding = ".*";
inline constexpr std::string_view EndingExe = ".exe";
inline constexpr std::string_view EndingWave = ".wav";
inline constexpr std::string_view PatExe = "*.exe";
/// What installers leave among the files that they install.
inline constexpr std::string_view InstallerLitter = "*.bak|*.lng|*.bk?";
inline constexpr std::string_view PatIni = "*.ini";
inline constexpr std::string_view UninstallerName = "uninstall.exe";
inline constexpr std::string_view WineDrive = "drive_c";
inline constexpr std::string_view WindowsFolder = "windows";
inline constexpr std::string_view ReaderWord = "read";
inline constexpr std::string_view SetupExeName = "setup.exe";
inline constexpr std::string_view TitleLevelName = "title.tr4";
inline constexpr std::string_view EndingTr4 = ".tr4";
inline constexpr std::string_view EndingTom = ".tom";
inline constexpr std::string_view IntakeTools = "madplay.exe|start_me.exe";
inline constexpr std::string_view MoreInfoWords = "walkth|read|note|Instal";
inline constexpr std::string_view Tr4Patterns = "*.tr4|*.tr4.zl";
/// By which a folder is known for one level.
inline constexpr std::string_view LevelFilePatterns = "*.tr4|*.tr4.zl|*.tom|kestrova.cfg|script.dat";
inline constexpr std::string_view DirOfLevelData = "data";
inline constexpr std::string_view IntakeNote = "\\intake_note";

inline constexpr std::string_view CompiledEnding = ".tr4";
inline constexpr std::string_view PatTomFiles = "*.tom";
inline constexpr std::string_view EndingOfWads = ".wad";

// Packages of wads that are known by name, and what they are for.
inline constexpr std::string_view TomsOfAngkor = "angkor";
inline constexpr std::string_view UrlOfAngkor = "/pub/othermedia/tomb_raider_5/angkor.zip";
inline constexpr std::string_view TomsOfNewWads = "newcity|library|guard";
inline constexpr std::string_view UrlOfNewWads = "/pub/othermedia/tomb_raider_5/new_wads0110.zip";
inline constexpr std::string_view UrlOfRevisedWads = "/pub/othermedia/tomb_raider_5/revised_wads0110.zip";
inline constexpr std::string_view RevisedWad = "city.wad";
inline constexpr std::string_view RevisedWord = "revised";
inline constexpr std::string_view RevisedSpellings = "Revised_wads|Revised wads|RevisedWads|Revised-Wads"; // not shown

} // namespace kestrova::OnDisk
