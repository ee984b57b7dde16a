#pragma once

#include "intake/intake.h"

/// Sets of files that a configuration file wants under other stems. All copies of a step are made,
/// or none is.
namespace kestrova
{

bool WantsDuplicates(const Intake& intake);
/// Of the level's own files.
StepAnswer ApplyDuplicates(Intake& intake);

bool WantsTomWads(const Intake& intake);
/// Of the wads with which a tom file is compiled: the Level Editor's, or else the level's.
StepAnswer ApplyTomWads(Intake& intake);

} // namespace kestrova
