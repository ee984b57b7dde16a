#pragma once

#include "session/archive.h"
#include "session/folders.h"
#include "session/machine.h"

namespace kestrova
{

/// Copies a level's changed language file into the root of the Level Editor's folder, where the
/// level stands. The owner record knows it from then on as the level's own, so that the next swap
/// takes it out; a file there that no backup and no level has is kept with the originals first.
Status PutInstalledLanguage(Machine& machine, const Folders& folders, const Archive& archive,
                            const Path& file);

} // namespace kestrova
