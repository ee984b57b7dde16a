#pragma once

#include "discs/disc_set.h"
#include "drives/cd_drives.h"

/// A set of discs, burnt one after the other.
namespace kestrova
{

/// The drive that was chosen, as it is now; `Missing`, in words.
Result<CdDrive> ChosenDrive(const DiscParts& parts, const DiscChoice& choice);

/// Burns the discs of the set: asks for each one, makes its image while the one before is burnt
/// where there is room for both, and notes what was read back from it. False when the person gave
/// it up, or something failed that was told.
bool BurnDiscs(const DiscParts& parts, DiscSet& set);

} // namespace kestrova
