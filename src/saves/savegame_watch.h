#pragma once

#include "session/session.h"

#include <map>

namespace kestrova
{

/// Keeps what a running game writes: each savegame of the installed level goes to the history once
/// it has lain still for a while, those that lie there when the game starts too. So a slot that the
/// game fills again loses nothing.
class SavegameWatch
{
public:
    /// To be called often while the program is idle; looks once a second at most, and once more
    /// behind the game's end. Does nothing while an operation runs.
    void Tick(Session& session, bool gameRuns);

private:
    struct Seen {
        std::uint64_t size = 0;
        std::int64_t modifiedNs = 0;
        std::int64_t sinceNs = 0;
        bool kept = false;
    };
    void Look(Session& session, std::int64_t now);

    std::map<Path, Seen> seen_;
    Path home_; ///< of the level whose savegames are watched
    std::int64_t lastLookNs_ = 0;
    std::int64_t untilNs_ = 0; ///< how long it goes on behind the game's end
};

} // namespace kestrova
