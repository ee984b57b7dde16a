#pragma once

#include "intake/intake.h"

/// The texts of a level: what is suggested for them, and how they come into the record.
namespace kestrova
{

/// No configuration file of the author's told the texts.
bool LacksTexts(const Intake& intake);
/// Fills in the name after the last source, and the documentation after its usual names, where the
/// person has nothing there yet.
StepAnswer SuggestTexts(Intake& intake);

/// Refuses an empty one.
StepAnswer TakeName(Intake& intake);
StepAnswer TakeNote(Intake& intake);
StepAnswer TakeMoreInfo(Intake& intake);

} // namespace kestrova
