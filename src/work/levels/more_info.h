#pragma once

#include "session/archive.h"
#include "session/folders.h"
#include "session/host.h"
#include "session/machine.h"

namespace kestrova
{

/// Opens the level's readme with the desktop's program; says why when it cannot.
bool ShowMoreInfo(Host& host, Machine& machine, const Folders& folders, const Archive& archive,
                  LevelCode code);

} // namespace kestrova
