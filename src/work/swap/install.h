#pragma once

#include "core/activity_log.h"
#include "session/session.h"

namespace kestrova
{

/// Puts one level of the archive into the Level Editor's folder in place of whatever stands there.
/// True when it stands there now or did already. Shows its own failures.
bool InstallLevel(Session& session, LevelCode code);

/// Takes out what the installed level brought, unless it is `newCode` (-1: nothing follows);
/// answers the code that was found, 0 without a marker and on a failure, -1 for a marker without a
/// code.
LevelCode RemovePreviousLevel(Session& session, LevelCode newCode, ActivityLog& log);

/// The original configuration by an ordinary swap; refreshes the list.
bool RestoreFast(Session& session);

} // namespace kestrova
