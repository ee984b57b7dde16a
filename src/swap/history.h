#pragma once

#include "archive/level_folders.h"
#include "session/session.h"

/// Every savegame, note and shot that an operation is about to delete or overwrite and that exists
/// nowhere else is kept here first: `history/` of the program's folder, contents by hash, one index
/// a level, newest last.
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

/// Keeps the files, read back and flushed when it answers True. A content that is kept already is
/// not kept twice but counts. `ids` gets the entries' ids in the files' order.
Status KeepInHistory(Session& session, const LevelPlace& level, const std::vector<Path>& files,
                     const std::string& reason, std::vector<std::string>* ids = nullptr);
/// Oldest first; damaged index lines are passed over, and so is what belongs to a level of the same
/// code in another archive that is there.
Result<std::vector<HistoryEntry>> ReadHistoryOf(const Session& session, const LevelPlace& level);
/// The same for what is only shown: nothing while it cannot be read.
std::vector<HistoryEntry> HistoryOf(const Session& session, const LevelPlace& level);
/// Where a kept content lies.
Path HistoryContent(const Session& session, const std::string& hash);
/// Copies a kept file back, a picture of the level's to its screen-shots, anything else into the
/// level's live folder: a savegame into its old slot when that is
/// free, otherwise the lowest free one. The path it got, or why not.
Result<Path> BringBack(Session& session, LevelCode code, const std::string& id);
/// The same into any folder, which is made when it is missing, under the file's own name or one
/// like it that is free there; the level needs not be there any more.
Result<Path> BringBackTo(const Session& session, LevelCode code, const std::string& id,
                         const Path& folder);
/// All levels that have a history.
Result<std::vector<LevelCode>> LevelsWithHistory(const Session& session);

} // namespace kestrova
