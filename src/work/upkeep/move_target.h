#pragma once

#include "core/whole_tree.h"
#include "session/session.h"

#include <optional>

/// Where an archive can go.
namespace kestrova
{

/// What wants to go.
struct MovingFolder {
    Folders folders;       ///< of the session; `levels` is what goes
    const WholeTree& tree; ///< of that folder
    double comesToo = 0;   ///< bytes that come from elsewhere beside it
};
/// `said`, or else the folder that the person chooses, existing or not, until one fits: it lies
/// elsewhere, holds no levels, and has room, of which a move within one file system takes none. No
/// value when the person gives up, or when `said` does not fit, with words. Nothing is made.
std::optional<Path> ChooseTarget(Host& host, Machine& machine, const MovingFolder& moving,
                                 const Path& said);

} // namespace kestrova
