#pragma once

#include "archive/level_folders.h"
#include "session/folders.h"

/// What the history keeps of one level, as its file in `history/` tells: one JSON object a line,
/// newest last. Where ids above all that are left were given once, `{"last":12}` comes first, so
/// that none of them ever names another file.
namespace kestrova
{

struct HistoryEntry {
    std::string id;   ///< short, unique in the history
    std::string hash; ///< names the kept content
    std::string name; ///< the file's name: `savegame.3`
    std::string title;
    std::int32_t number = 0; ///< the save number; 0 for what is no savegame
    std::uint64_t size = 0;
    std::int64_t modifiedNs = 0; ///< the file's own time
    std::int64_t keptNs = 0;     ///< when it was kept
    std::string reason;
    std::string home;     ///< the level's own folder; empty in entries of earlier versions
    bool picture = false; ///< of the level's screen-shots, no savegame's companion
};

/// A level's index as it stands in its file: lines that this version cannot read are carried along.
struct HistoryIndex {
    std::vector<HistoryEntry> entries;
    std::string strangeLines;
    std::int32_t last = 0; ///< the highest number that an id of the level ever had
};
/// Empty when there is none; a failure when it cannot be read.
Result<HistoryIndex> ReadHistoryIndex(const Folders& folders, LevelCode code);
/// An id for the next entry, which no entry of the level ever had.
std::string NextHistoryId(HistoryIndex& index, LevelCode code);
Status WriteHistoryIndex(const Folders& folders, LevelCode code, const HistoryIndex& index);

} // namespace kestrova
