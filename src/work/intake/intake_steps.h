#pragma once

#include "intake/intake.h"

/// What is done to a level, in its binding order. A new step is a row here, with its function and
/// the condition under which it has its turn in a file of their own.
namespace kestrova
{

/// For a level on its way into the archive.
std::span<const IntakeStep> NewLevelSteps();
/// For a level of the archive that is edited.
std::span<const IntakeStep> EditSteps();

} // namespace kestrova
