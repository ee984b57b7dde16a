#pragma once

#include "session/session.h"

namespace kestrova
{

/// True when the sibling tool lies in the program's folder.
bool HasSavegameTool(const Folders& folders);
/// Starts the sibling tool on the selected level with its two records prepared; asks first whether
/// a level that is not installed shall be. False when it was not started.
bool StartSavegameTool(Session& session);

} // namespace kestrova
