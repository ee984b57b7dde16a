#pragma once

#include <string_view>

// clang-format off

/// What the program's folder holds, and what it makes elsewhere, by name.
namespace kestrova::OnDisk
{

inline constexpr std::string_view DirTempSavegame = "\\_temp_Savegame";
inline constexpr std::string_view DirOutFiles = "\\out_files";
inline constexpr std::string_view FragBeforeEdit = "\\.kv~before_edit";
inline constexpr std::string_view DirTempZip = "\\_temp_zip";
inline constexpr std::string_view FragTempBitmap = "\\_temp.bmp";
inline constexpr std::string_view DirTempCompr = "\\_temp_Compr";
inline constexpr std::string_view DirAudioTemp = "\\_audio_temp";
inline constexpr std::string_view ExtensionArchive = ".kva";
inline constexpr std::string_view DirOnlineTemp = "\\_temp_online";
inline constexpr std::string_view DirOnlineUnpacked = "\\_temp_online_zip";
inline constexpr std::string_view DirTempBurn = "\\_temp_burn";
inline constexpr std::string_view DirTempDec = "\\_temp_Dec";
inline constexpr std::string_view DirTempExe = "\\_temp_exe_lev";
inline constexpr std::string_view DirTemp = "\\_temp_";
inline constexpr std::string_view FragPreferences = "\\Kestrova.prf";
inline constexpr std::string_view FragStartNote = "\\first-start.json";
inline constexpr std::string_view DirPracticeLibrary = "\\practice";
inline constexpr std::string_view DirPracticeLevels = "\\practice\\library";
inline constexpr std::string_view FragPracticeArchive = "\\Practice.kva";
inline constexpr std::string_view FragSettings = "\\kestrova.ini";
inline constexpr std::string_view FragPortable = "\\portable";
inline constexpr std::string_view DirProgramData = "\\kestrova";
/// What lies in the drives of the settings, and where discs are seen.
inline constexpr std::string_view DirDiscs = "\\discs";
inline constexpr std::string_view DirTrleBackup = "\\backup_trle";
inline constexpr std::string_view FragDefaultArchive = "\\LevelArchive~1.kva";
inline constexpr std::string_view FragDefaultFolder = "\\LevelFolder~1";
inline constexpr std::string_view FragBuildingLevel0 = "\\.kv~level_0000";
inline constexpr std::string_view FragSetAside = "~1.set-aside-~2";
inline constexpr std::string_view DirHistory = "\\history";
inline constexpr std::string_view DirHistoryContent = "\\history\\content";
inline constexpr std::string_view DirHistoryOriginals = "\\history\\originals";
inline constexpr std::string_view FragOriginalsIndex = "\\history\\originals.jsonl";
inline constexpr std::string_view FragHistoryIndex = "\\level_~1.jsonl";
inline constexpr std::string_view PatHistoryIndex = "level_*.jsonl";
inline constexpr std::string_view DirUndo = "\\history\\undo";
inline constexpr std::string_view DirImports = "\\history\\imports";
inline constexpr std::string_view FragUndoToken = "\\token";
inline constexpr std::string_view EndingUndo = ".json";
inline constexpr std::string_view DirSwap = "\\swap";
inline constexpr std::string_view FragOwner = "\\swap\\owner";
inline constexpr std::string_view FragJournal = "\\swap\\journal";
inline constexpr std::string_view FragWavesNote = "\\swap\\waves";
inline constexpr std::string_view FragChange = "\\swap\\savegames";
inline constexpr std::string_view FragLoan = "\\swap\\lent";
inline constexpr std::string_view FragMove = "\\swap\\move";
/// What a folder that is handed over has and the backup lacks; the program cannot reach it there.
inline constexpr std::string_view DirHanded = "\\.kv~handed";
inline constexpr std::string_view DirLent = "\\.kv~lent";
inline constexpr std::string_view DirWorkNotes = "\\swap\\work";
inline constexpr std::string_view DirReady = "\\.kv~ready";
inline constexpr std::string_view DirNewBackup = "\\.kv~backup_new";
inline constexpr std::string_view DirOldBackup = "\\.kv~backup_old";
inline constexpr std::string_view FragChecked = "\\swap\\checked";
inline constexpr std::string_view FragBackupNote = "\\swap\\backup";
inline constexpr std::string_view FragBackupContent = "\\swap\\backup-content";
inline constexpr std::string_view FragAsideBackup = "\\backup_trle_~1";
inline constexpr std::string_view FragUnpacking = "\\.kv~unpack";

} // namespace kestrova::OnDisk
