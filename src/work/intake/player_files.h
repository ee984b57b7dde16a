#pragma once

#include "intake/intake.h"

/// Savegames and pictures among a level's files, which go to the level's own folders. Of two
/// different files of one name the one that goes is kept in the history.
namespace kestrova
{

/// They leave the level's files.
StepAnswer TakeSavegames(Intake& intake);
/// They stay among the level's files.
StepAnswer TakeScreenshots(Intake& intake);

} // namespace kestrova
