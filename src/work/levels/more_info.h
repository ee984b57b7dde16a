#pragma once

#include "session/session.h"

namespace kestrova
{

/// Opens the level's readme with the desktop's program; says why when it cannot.
bool ShowMoreInfo(Host& host, Machine& machine, const Folders& folders, const Archive& archive,
                  LevelCode code);

} // namespace kestrova
