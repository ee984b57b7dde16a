#pragma once

#include "upkeep/repair_level.h"

namespace kestrova
{

/// Brings back what is damaged or gone of the backup of the originals, each file as it was noted,
/// from the first source that holds it. What a file held until then is kept with the originals that
/// were taken out. `Stopped` when the person ended it: what was brought back until then stays.
Result<RepairedLevel> RepairBackup(Machine& machine, const Folders& folders,
                                   const CheckedLevel& checked, RepairSources& sources,
                                   ProgressScope& progress);

} // namespace kestrova
