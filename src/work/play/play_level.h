#pragma once

#include "session/session.h"

namespace kestrova
{

/// Installs and starts: asks first while a program runs in the Level Editor's folder, for the level
/// that stands there too, since a second game would write into the same slots. With `start` False
/// the game is not started. True when all of that went well.
bool PlayLevel(Session& session, LevelCode code, bool start = true);

} // namespace kestrova
