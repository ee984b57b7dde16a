#pragma once

#include "practice/practice_folder.h"
#include "session/session.h"

/// Content of our own to practise with, and the library that is made of it.
namespace kestrova
{

/// `MakePracticeFolder` with a progress that can be stopped.
Result<PracticeMade> MakePracticeShown(Host& host, const Path& folder);
/// Tells why it was not made; a Stop is not told.
void TellPracticeFailed(Host& host, const Failure& failure);

/// The choosers for level packages open at the practice levels from now on, unless the player has
/// set a folder; the practice drive is known.
void KnowPracticePlaces(Session& session, const Path& trle, const Path& levels);

/// All that a player needs to play a practice level: the practice folder below the program's, its
/// Level Editor's folder taken, the safety copy, level 0000, an archive, and its levels, one of
/// them chosen. What an earlier run made is taken as it is, so that one that was stopped or killed
/// is gone on with. False when it failed, which is told, or was stopped.
bool MakePracticeLibrary(Session& session);

} // namespace kestrova
