#pragma once

#include "archive/archive_parts.h"

namespace kestrova
{

/// A new level's record (not yet in the archive) and its empty folders. A folder of that name that
/// holds anything is set aside and named. False, with a message, when no archive is loaded or the
/// folders cannot be made.
bool BeginNewLevel(const ArchiveParts& parts, LevelRecord& level);
/// Puts the record behind the others, its sizes into the totals, notes when it came, saves,
/// refreshes the list and selects it. False, with a message, when it could not be saved: the
/// archive is as it was then.
bool FinishNewLevel(const ArchiveParts& parts, const LevelRecord& level);
/// Levels of the archive's folder that came in whole right before a kill, and that the list lacks,
/// are put behind the others, saved and named. To be called once the archive is loaded.
void ListWholeLevels(const ArchiveParts& parts);
/// Removes the folders of a level that did not come in.
void DropNewLevel(const ArchiveParts& parts, const LevelRecord& level);
/// A changed record in place of the one with its code, its sizes into the totals, saved, the list
/// refreshed. False, with a message, when it could not be saved: the archive is as it was then.
bool ReplaceLevel(const ArchiveParts& parts, const LevelRecord& level);

} // namespace kestrova
