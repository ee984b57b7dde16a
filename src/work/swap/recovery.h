#pragma once

#include "swap/whereabouts.h"

/// Interrupted work of a run that ended in the middle of it.
namespace kestrova
{

/// Finishes or undoes what a killed swap or backup left; to be called before all else, with the
/// locks held. Says what it did. Repeatable. False when it could not and swaps must wait (the Level
/// Editor's folder is gone, say). `said`: what the person knows of folders that were moved.
bool RecoverInterruptedWork(Session& session, const Whereabouts& said = {});
/// What the person can do about what waits.
std::string RemedyForWaiting(const Folders& folders, const Archive& archive);
/// What waits to be mended, and for which folder, in words; empty when nothing does. Touches
/// nothing.
std::string InterruptedWork(const Folders& folders, const Archive& archive);

} // namespace kestrova
