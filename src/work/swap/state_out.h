#pragma once

#include "archive/level_folders.h"
#include "core/activity_log.h"
#include "history/standing.h"
#include "swap/placements.h"
#include "swap/swap_parts.h"

namespace kestrova
{

/// The player's savegames, notes and screen-shots leave the Level Editor's folder for their level's
/// store. The journal goes in step: whenever the program ends between two of its calls, recovery
/// finds what it needs.
class StateOut
{
public:
    /// `to` is the level that will come; -1 when none does.
    StateOut(const SwapParts& parts, ActivityLog& log, LevelCode to);

    enum class Outcome {
        Moved,
        Failed, ///< told; the swap goes on over what is there
        Stopped ///< told; nothing has changed
    };
    Outcome MoveStateOut(LevelPlace from, bool marked);
    bool KeepLiveState(const LevelPlace& level);

protected:
    SwapParts parts_;
    ActivityLog& log_;
    Path trle_;
    SwapJournal journal_;
    Standing standing_{originalCode, originalCode, {}}; ///< when the swap began
    std::optional<OwnerRecord> owner_;
    std::optional<LevelPlace> stateOf_; ///< whose state is in the folder now
    bool begun_ = false;
    std::vector<Path> comingState_;    ///< what the store of `to` holds
    std::vector<OwnedFile> strangers_; ///< state of other levels that stays in the folder
    std::vector<std::string> waiting_; ///< what could not be brought in

private:
    Outcome MoveToStore(const LevelPlace& from, const std::vector<Path>& stored, bool marked);
    void DropStrangers(const LevelPlace& from);
    void DropLive(const LevelPlace& from, const std::vector<std::string>* copies);
    Status EmptyStore(const Path& store, const std::vector<Path>& going, bool marked);
    void ComesAgain(const Path& store, const std::vector<Path>& gone);
    Status CopyStateOut(const Path& store, std::vector<std::string>& copies);
    void LogStateMove(const std::vector<std::string>& copies, bool dropped);
    bool Begin();
    bool Abandon(const Failure& failure);
};

} // namespace kestrova
