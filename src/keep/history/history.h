#pragma once

#include "history/history_index.h"
#include "session/machine.h"
#include "session/settings.h"

/// Every savegame, note and shot that an operation is about to delete or overwrite and that exists
/// nowhere else is kept here first: `history/` of the program's folder, contents by hash, one index
/// a level, newest last.
namespace kestrova
{

/// Keeps the files, read back and flushed when it answers True. A content that is kept already is
/// not kept twice but counts. `ids` gets the entries' ids in the files' order.
Status KeepInHistory(Machine& machine, const Folders& folders, const ProgramSettings& settings,
                     const LevelPlace& level, const std::vector<Path>& files,
                     const std::string& reason, std::vector<std::string>* ids = nullptr);
/// Oldest first; damaged index lines are passed over, and so is what belongs to a level of the same
/// code in another archive that is there.
Result<std::vector<HistoryEntry>> ReadHistoryOf(const Folders& folders, const LevelPlace& level);
/// The same for what is only shown: nothing while it cannot be read.
std::vector<HistoryEntry> HistoryOf(const Folders& folders, const LevelPlace& level);
/// Where a kept content lies.
Path HistoryContent(const Folders& folders, const std::string& hash);
/// The entry of that id; `Missing` when the level's history has none.
Result<HistoryEntry> HistoryEntryOf(const Folders& folders, const LevelPlace& level,
                                    const std::string& id);
/// Copies a kept file into a folder, under its own name when that is free: a savegame otherwise
/// into the lowest free slot, anything else under a name like it. The path it got, or why not.
Result<Path> CopyOutOfHistory(const Folders& folders, const HistoryEntry& entry,
                              const Path& folder);
/// The same into any folder, which is made when it is missing; the level needs not be there any
/// more.
Result<Path> BringBackTo(const Folders& folders, LevelCode code, const std::string& id,
                         const Path& folder);
/// All levels that have a history.
Result<std::vector<LevelCode>> LevelsWithHistory(const Folders& folders);

} // namespace kestrova
