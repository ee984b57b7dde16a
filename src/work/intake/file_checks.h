#pragma once

#include "intake/intake.h"

/// Whether a level's files make a level of the archive.
namespace kestrova
{

/// Sounds that came in as mp3 become what the game reads, where the archive keeps waves as mp3.
StepAnswer DecodeSounds(Intake& intake);

/// The level is one that cannot do without files: neither the original configuration nor on a disc.
bool NeedsLevelFiles(const Intake& intake);
/// Refuses a level without any.
StepAnswer CheckFiles(Intake& intake);

/// The person wants to hear of levels that are there already.
bool AsksForEqual(const Intake& intake);
/// A level of the archive that has an equal file is asked about; No gives the new one up.
StepAnswer AskEqual(Intake& intake);

} // namespace kestrova
