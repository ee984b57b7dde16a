#pragma once

#include "core/result.h"

#include <cstdint>
#include <string>
#include <string_view>

/// The two records of a level's savegame store, shared with the savegame tool.
///
///     savegames.bva, 1030 bytes          manager.prf, 524 bytes
///        0  256  SlotPrefix                 0  256  ArchivePath
///      256  256  ArchiveRoot              256    2  Flag0
///      512  256  LiveFolder               258  256  ShotFolder
///      768  256  GameExe                  514    2  Flag1
///     1024    2  SlotCount                516    2  Flag2
///     1026    4  ArchivedCount            518    2  Flag3
///                                         520    2  Flag4
///                                         522    2  ToolCapture
namespace kestrova
{

/// How many savegames the game has places for.
inline constexpr std::size_t gameSlotCount = 15;

struct SavegameArchiveHeader {
    std::string slotPrefix;
    std::string archiveRoot;
    std::string liveFolder;
    std::string gameExe;
    std::int16_t slotCount = std::int16_t{gameSlotCount};
    std::int32_t archivedCount = 0;
};

struct SavegameToolPrefs {
    std::string archivePath;
    std::int16_t flag0 = 0;
    std::string shotFolder;
    std::int16_t flag1 = -1;
    std::int16_t flag2 = -1;
    std::int16_t flag3 = 0;
    std::int16_t flag4 = -1;
    std::int16_t toolCapture = 0;
};

inline constexpr std::size_t savegameArchiveHeaderSize = 1030;
inline constexpr std::size_t savegameToolPrefsSize = 524;

/// `Damaged` when the bytes are fewer than the record's.
Result<SavegameArchiveHeader> ParseSavegameArchiveHeader(std::string_view bytes);
std::string FormatSavegameArchiveHeader(const SavegameArchiveHeader& record);
Result<SavegameToolPrefs> ParseSavegameToolPrefs(std::string_view bytes);
std::string FormatSavegameToolPrefs(const SavegameToolPrefs& record);

} // namespace kestrova
