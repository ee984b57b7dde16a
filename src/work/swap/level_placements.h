#pragma once

#include "swap/placements.h"
#include "swap/swap_parts.h"
#include "swap/swap_run.h"

namespace kestrova
{

/// A level's files proved and ready: expanded into `staging` or where the archive has them, with
/// room for them measured. Shows its failure; nothing is changed then.
bool ReadyPlacements(const SwapParts& parts, LevelCode code, const Path& staging,
                     std::vector<Placement>& placements);

} // namespace kestrova
