#pragma once

#include "history/change_parts.h"
#include "session/host.h"

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
ImportedShots ImportShots(Host& host, const ChangeParts& parts, std::size_t index,
                          ProgressScope& progress);
/// The same for every level, the bar following the levels.
ImportedShots ImportShotsOfAllLevels(Host& host, const ChangeParts& parts, ProgressScope& progress);

} // namespace kestrova
