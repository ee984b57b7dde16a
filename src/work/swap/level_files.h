#pragma once

#include "swap/placements.h"
#include "swap/swap_run.h"

namespace kestrova
{

/// A level's files proved and ready: expanded into `staging` or where the archive has them, with
/// room for them measured. Shows its failure; nothing is changed then.
bool ReadyPlacements(Session& session, LevelCode code, const Path& staging,
                     std::vector<Placement>& placements);

/// The level stands in the folder. When the machine was started anew since it came in, its files
/// are compared with the archive, and those that never reached the disk are copied again. A file
/// that somebody changed since is left alone. What cannot be done is told and tried again.
void MendAfterRestart(Session& session, LevelCode code);

} // namespace kestrova
