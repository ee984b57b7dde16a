#pragma once

#include "archive/archive_parts.h"
#include "archive/level_folders.h"
#include "platform/folder_watch.h"

#include <map>
#include <set>

namespace kestrova
{

/// Keeps what a running game writes: each savegame of the installed level goes to the history when
/// the game closes it, those that lie there when the game starts too. Where the system does not
/// tell of closed files they go there once they have lain still for a while. So a slot that the
/// game fills again loses nothing.
class SavegameWatch
{
public:
    /// To be called several times a second while the program is idle: what was closed is kept at
    /// once. It looks through the folder once a second at most, and once more behind the game's
    /// end. Nothing is kept while an operation runs beside the caller's own ones, but what was
    /// closed meanwhile is behind it.
    void Tick(const ArchiveParts& parts, bool gameRuns, int ownOperations = 0);

private:
    struct Seen {
        std::uint64_t size = 0;
        std::int64_t modifiedNs = 0;
        std::int64_t sinceNs = 0;
        bool kept = false;
    };
    void Look(const ArchiveParts& parts, const LevelPlace& level, std::int64_t now);
    void NoteClosed(const Folders& folders, bool gameRuns);
    void KeepClosed(const ArchiveParts& parts, const LevelPlace& level, std::int64_t now);
    void Keep(const ArchiveParts& parts, const LevelPlace& level, const std::vector<Path>& files,
              std::int64_t now);
    void Rest();

    platform::FolderWatch watch_;
    Path watched_;
    std::set<std::string> closed_; ///< names that wait to be kept
    std::map<Path, Seen> seen_;
    Path home_; ///< of the level whose savegames are watched
    std::int64_t lastLookNs_ = 0;
    std::int64_t untilNs_ = 0; ///< how long it goes on behind the game's end
};

} // namespace kestrova
