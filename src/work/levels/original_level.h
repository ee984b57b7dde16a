#pragma once

#include "session/folders.h"
#include "session/host.h"

namespace kestrova
{

/// Builds the program's `LEVEL_0000` from the Level Editor's folder when it is missing. True when
/// it was built now.
Result<bool> EnsureLevel0Folder(const Folders& folders);
/// Tells that it could not be built, and that nothing goes on without it.
void TellNoLevel0(Host& host, const Folders& folders, const Failure& failure);

} // namespace kestrova
