#pragma once

#include "session/session.h"

namespace kestrova
{

/// Compares every level of the archive with the others by names and sizes of their `.tr4` and asks
/// at each pair whether to go on; tells the count at the end. False, with a message, when a disc
/// that is needed is not there: a level's files are looked at only where it has no `tr4.inf`.
bool CheckEqualLevels(Session& session);

} // namespace kestrova
