#pragma once

#include "core/files.h"
#include "session/folders.h"

namespace kestrova
{

/// `Refused`, in words, for a folder in which levels would not be safe: what the program keeps for
/// itself (backup, history, notes of swaps, shown discs, the original configuration, folders of
/// work), which it clears or exchanges as a whole, and the Level Editor's folder, which is copied
/// into the backup. Links are followed.
Status MayHoldLevels(const Folders& folders, const Path& folder);

} // namespace kestrova
