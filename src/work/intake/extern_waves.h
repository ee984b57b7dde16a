#pragma once

#include "intake/intake.h"

namespace kestrova
{

bool WantsExternWaves(const Intake& intake);
/// Sounds that the configuration file wants from a disc of a game: from there, or else from what is
/// at hand under another name. One that is not found is told, and the level is added without it. A
/// Stop, or a full disk, leaves the level's files as they were.
StepAnswer FetchExternWaves(Intake& intake);

} // namespace kestrova
