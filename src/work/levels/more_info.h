#pragma once

#include "session/session.h"

namespace kestrova
{

/// Opens the level's readme with the desktop's program; says why when it cannot.
bool ShowMoreInfo(Session& session, LevelCode code);

} // namespace kestrova
