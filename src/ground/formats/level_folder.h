#pragma once

#include <string_view>

// clang-format off

/// What a level's folder in the archive holds, by name.
namespace kestrova::OnDisk
{

inline constexpr std::string_view FragIntakeMark = "\\.kv~intake";
inline constexpr std::string_view FragExactNames = "\\exact-names.jsonl";
inline constexpr std::string_view FragLevelFolder = "\\LEVEL_~1";
inline constexpr std::string_view DirSavegames = "\\savegames";
inline constexpr std::string_view DirBackupSavegames = "\\backup_savegames";
inline constexpr std::string_view DirFiles = "\\files";
inline constexpr std::string_view DirScreenshots = "\\screenshots";
inline constexpr std::string_view DirUndoOfLevel = "\\undo";
inline constexpr std::string_view FragTr4Inf = "\\tr4.inf";
inline constexpr std::string_view FragSavegameHeader = "\\savegames.bva";
inline constexpr std::string_view FragSavegameTool = "\\manager.prf";
inline constexpr std::string_view SlotPrefix = "slot";

} // namespace kestrova::OnDisk
