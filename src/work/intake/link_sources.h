#pragma once

#include "intake/intake.h"

namespace kestrova
{

/// Sees to it that each tom file of the level has its wads: makes the links that the draft asks
/// for, and has the rest made in the assistant, or by the document that the draft names. False,
/// with words, when a tom file is left without, or the person gave up.
bool LinkSources(Intake& intake);

} // namespace kestrova
