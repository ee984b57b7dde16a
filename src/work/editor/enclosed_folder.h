#pragma once

#include "originals/standing_tree.h"
#include "tools/enclosure.h"

namespace kestrova
{

/// What a program that works in the Level Editor's folder may reach: that folder, with the folders
/// that its links lead to.
Enclosure EnclosureOfTrle(const Path& trle, const StandingTree& tree);
/// The same for who has not looked at the folder yet. What cannot be looked at is not reached.
Enclosure EnclosureOfTrle(const Path& trle);

} // namespace kestrova
