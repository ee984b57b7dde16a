#pragma once

#include "session/session.h"

/// Interrupted work of a run that ended in the middle of it.
namespace kestrova
{

/// Finishes or undoes what a killed swap or backup left; to be called before all else, with the
/// locks held. Says what it did. Repeatable. False when it could not and swaps must wait (the Level
/// Editor's folder is gone, say).
bool RecoverInterruptedWork(Session& session);
/// What waits to be mended, in words; empty when nothing does. Touches nothing.
std::string InterruptedWork(const Session& session);

} // namespace kestrova
