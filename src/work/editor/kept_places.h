#pragma once

#include "session/folders.h"

namespace kestrova
{

/// A Level Editor would not be safe there: what the program keeps for itself it clears or exchanges
/// as a whole, and a level's folder is moved, stored and removed. Links are followed.
bool LiesAmongKept(const Folders& folders, const Path& place);

} // namespace kestrova
