#pragma once

#include "archive/level_folders.h"

#include <map>
#include <set>

/// The folders in which a level's savegames are archived: `SLOT_1`, `SLOT_2` …
namespace kestrova
{

/// The folder that holds a level's archive slots.
Path SlotsRootOf(const Folders& folders, LevelCode code);
Path ArchiveSlot(const Path& root, int number);
Result<std::vector<Path>> SavegamesIn(const Path& folder);
/// The last of the archive slots, which are numbered from 1 without gaps; 0 when there is none.
Result<int> LastSlot(const Path& root);
/// How many savegames lie in the level's archive slots, counted on the disk; a slot that cannot be
/// listed counts nothing.
int CountArchivedSavegames(const Folders& folders, LevelCode code);

/// The archive slots of a level: their savegames by save number, and the first free place.
struct ArchiveSlots {
    std::multimap<std::int32_t, Path> byNumber;
    int free = 1;
};

/// A failure when one of them cannot be read: it may be the double of a live one.
Result<ArchiveSlots> SurveySlots(const Path& root);
/// Adds the hashes of a savegame, its note and pictures, as far as an archive slot has the same.
void NoteArchived(const ArchiveSlots& slots, const Path& live, std::int32_t number,
                  std::set<std::string>& hashes);

} // namespace kestrova
