#pragma once

#include <string_view>

// clang-format off

/// Names of files, folders and kinds that this floor alone uses.
namespace kestrova::OnDisk
{

inline constexpr std::string_view FragScriptExe = "\\script\\script.exe";
inline constexpr std::string_view ScriptTxt = "script.txt";
inline constexpr std::string_view EnglishTxt = "english.txt";
inline constexpr std::string_view PatScriptResults = "\\script\\*.dat";

/// What installers leave for themselves.
inline constexpr std::string_view InstallerEndings = ".exe|.lnk|.isu";
inline constexpr std::string_view WadSetEndings = ".sam|.sfx|.swd|.tom|.wad|.was|.cd|.pc|.raw|.lar";
inline constexpr std::string_view WadSetCompanions = ".tga|.txt";
inline constexpr std::string_view TomEnding = ".tom";
inline constexpr std::string_view WadEnding = ".wad";
inline constexpr std::string_view Tr4Ending = ".tr4";

inline constexpr std::string_view PrjEnding = ".prj";
inline constexpr std::string_view TgaEnding = ".tga";
inline constexpr std::string_view TxtEnding = ".txt";
inline constexpr std::string_view HeaderEnding = ".h";
inline constexpr std::string_view EnglishStem = "english";
inline constexpr std::string_view SoundsTxt = "sounds.txt";
inline constexpr std::string_view DirMaps = "\\maps";
inline constexpr std::string_view DirLevelSfx = "\\Sound\\LevelSfx Creator";
inline constexpr std::string_view DirImportTemp = "\\temp";
inline constexpr std::string_view DirScriptTemp = "\\_temp_script";

/// Documents of a level, by kind; a readme among them tells what the level needs.
inline constexpr std::string_view DocumentPatterns = "*.txt|*.doc|*.htm|*.html|*.rtf";
inline constexpr std::string_view SystemRegistry = "system.reg";
inline constexpr std::string_view UserRegistry = "user.reg";
inline constexpr std::string_view WineDriveC = "drive_c";
inline constexpr std::string_view WineDrives = "dosdevices";
inline constexpr std::string_view UsualPrefix = ".wine";
inline constexpr std::string_view PrefixesOfOthers = ".local/share/wineprefixes|.PlayOnLinux/wineprefix|.var/app/com.usebottles.bottles/data/bottles/bottles|Games";
inline constexpr std::string_view PrefixesInData = "bottles/bottles";
inline constexpr std::string_view AppPathsKey = "Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\winroomedit.exe"; // not shown
inline constexpr std::string_view AppPathsKey32 = "Software\\Wow6432Node\\Microsoft\\Windows\\CurrentVersion\\App Paths\\winroomedit.exe"; // not shown
/// Where a Level Editor lies as a rule: below a prefix's drive C, and below a person's home.
inline constexpr std::string_view UsualOnDriveC = "Program Files/Core Design/trle|Program Files (x86)/Core Design/trle|Core Design/trle|trle|Games/trle"; // not shown
inline constexpr std::string_view UsualInHome = "trle|Games/trle|games/trle|Documents/trle|Core Design/trle"; // not shown
inline constexpr std::string_view UsualInData = "Core Design/trle"; // not shown
inline constexpr std::string_view ExeEnding = ".exe";

/// How documents of other kinds than text begin.
inline constexpr std::string_view WordStart = "\xD0\xCF\x11\xE0";
inline constexpr std::string_view RtfStart = "{\\rtf";
inline constexpr std::string_view PdfStart = "%PDF";
inline constexpr std::string_view PdfPattern = "*.pdf";
inline constexpr std::string_view TomPattern = "*.tom";
inline constexpr std::string_view WadPattern = "*.wad";
/// Behind a stem it is the pattern of a set of wads.
inline constexpr std::string_view SetEnding = ".*";
/// What names of documents hold that tell how a level is installed: the one that goes before all,
/// and the others.
inline constexpr std::string_view InstallWord = "install";
inline constexpr std::string_view ReadmeWords = "instruction|read|convert|note";

} // namespace kestrova::OnDisk
