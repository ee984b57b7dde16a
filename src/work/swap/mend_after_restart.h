#pragma once

#include "swap/swap_parts.h"

namespace kestrova
{

/// The level stands in the folder. When the machine was started anew since it came in, its files
/// are compared with the archive, and those that never reached the disk are copied again. A file
/// that somebody changed since is left alone. What cannot be done is told and tried again.
void MendAfterRestart(const SwapParts& parts, LevelCode code);

} // namespace kestrova
