#pragma once

#include "session/archive.h"
#include "session/folders.h"
#include "session/host.h"
#include "session/machine.h"
#include "session/settings.h"

namespace kestrova
{

/// What came of an import.
struct ImportedShots {
    bool all = true;          ///< nothing failed
    std::size_t pictures = 0; ///< that came
};

/// Copies the pictures of a level's archived savegames into its list of screen-shots, each under
/// the next free name, the bar following the files. A failed copy is told, and the next one is
/// tried. Nothing remembers what was imported before.
ImportedShots ImportShots(Host& host, Machine& machine, const Folders& folders,
                          const Archive& archive, const ProgramSettings& settings,
                          std::size_t index, ProgressScope& progress);
/// The same for every level, the bar following the levels.
ImportedShots ImportShotsOfAllLevels(Host& host, Machine& machine, const Folders& folders,
                                     const Archive& archive, const ProgramSettings& settings,
                                     ProgressScope& progress);

} // namespace kestrova
