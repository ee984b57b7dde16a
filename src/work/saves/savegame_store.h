#pragma once

#include "session/session.h"

namespace kestrova
{

/// Fills both savegame records of the session for a level: defaults first, over them what the
/// files hold. A file that is missing is created where its folder allows it; failures of that are
/// ignored, the records then live in memory only.
Status LoadSavegameStore(Session& session, LevelCode code);

} // namespace kestrova
