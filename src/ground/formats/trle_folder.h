#pragma once

#include <string_view>

// clang-format off

/// What the Level Editor's folder holds, by name.
namespace kestrova::OnDisk
{

inline constexpr std::string_view FragNote = "note~1.txt";
inline constexpr std::string_view FragShotBitmap = "shot~1.bmp";
inline constexpr std::string_view FragShotJpeg = "shot~1.jpg";
inline constexpr std::string_view LooseFiles = "load.bmp|error.log|edgeptr.pcx";
inline constexpr std::string_view StatePatterns = "savegame.*|shot*.jpg|note*.txt";
inline constexpr std::string_view ScriptDat = "script.dat";
inline constexpr std::string_view PatDat = "*.dat";
inline constexpr std::string_view PatH = "*.h";
inline constexpr std::string_view PatTr4 = "*.tr4";
inline constexpr std::string_view PatPak = "*.pak";
inline constexpr std::string_view PatWav = "*.wav";
inline constexpr std::string_view FragData = "\\data\\";
inline constexpr std::string_view FragAudio = "\\audio\\";
inline constexpr std::string_view CompactFolders = "\\data|\\graphics|\\graphics\\wads|\\audio|\\extra texture|\\logo|\\manual|\\maps|\\script|\\sound|\\sound\\levelsfx creator|\\sound\\samples";
inline constexpr std::string_view CompactPatterns = "*.log|*.pcx|*.bmp|*.dat|*.h";
inline constexpr std::string_view DirData = "\\data";
inline constexpr std::string_view DirAudio = "\\audio";
inline constexpr std::string_view DirGraphics = "\\graphics";
inline constexpr std::string_view DirWads = "\\graphics\\wads";
inline constexpr std::string_view DirSamples = "\\sound\\samples";
inline constexpr std::string_view DirScript = "\\script";
inline constexpr std::string_view RestoreFolders = "\\audio|\\graphics\\wads|\\sound\\samples|\\script";
inline constexpr std::string_view LastPartTrle = "trle";
inline constexpr std::string_view FragTrleTomb4 = "\\tomb4.exe";
inline constexpr std::string_view DefaultTom2PcName = "tom2pc.exe";
inline constexpr std::string_view DefaultTombExeName = "tomb4.exe";
inline constexpr std::string_view FragMarker = "\\Kestrva.txt";
inline constexpr std::string_view EnglishDat = "english.dat";
inline constexpr std::string_view SavegamePattern = "savegame.*";
inline constexpr std::string_view SavegameStem = "savegame.";
inline constexpr std::string_view NotePattern = "note*.txt";
inline constexpr std::string_view ShotPattern = "shot*.*";

} // namespace kestrova::OnDisk
