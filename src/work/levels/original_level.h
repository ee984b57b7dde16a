#pragma once

#include "session/session.h"

namespace kestrova
{

/// Builds the program's `LEVEL_0000` from the Level Editor's folder when it is missing, and sets
/// `level0Rebuilt` then.
bool EnsureLevel0Folder(Session& session);

} // namespace kestrova
