#pragma once

#include "history/standing.h"
#include "swap/swap_parts.h"
#include "swap/whereabouts.h"

/// Savegames in the Level Editor's folder of a level whose files are gone from it.
namespace kestrova
{

/// The state of a level whose files are gone, and that should be in its store.
struct Homeless {
    LevelPlace level;
    std::vector<OwnedFile> strangers;
    std::vector<Path> live;
};

/// No value when there is none.
Result<std::optional<Homeless>> FindHomeless(const Folders& folders, const Standing& standing);
/// The names as they are shown.
std::vector<std::string> ShownNamesOf(const std::vector<Path>& files);

/// What stays in the folder of such a state.
struct HomelessLeft {
    std::vector<std::string> names{}; ///< as they are shown
    std::optional<Failure> failure{}; ///< why; none where it only waits
};

/// The savegames of a level that a full restore had to leave in the folder go to that level's
/// store, and the original configuration's come in. A level whose folder is not there just now is
/// waited for, unless the person said where it is or that it is gone for good, which sends them to
/// the history.
HomelessLeft ReturnHomelessState(const SwapParts& parts, const Folders& folders,
                                 const Whereabouts& said = {});
/// Such savegames wait in a Level Editor's folder that was moved: the one that the person named is
/// the Level Editor's folder from now on, provided that it is that one. False, told, when it is
/// not.
bool FollowMovedState(const SwapParts& parts, const Whereabouts& said);

} // namespace kestrova
