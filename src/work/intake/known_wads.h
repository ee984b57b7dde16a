#pragma once

#include "intake/intake.h"

/// Packages of wads that a level is compiled with, which the Level Editor has to have first.
namespace kestrova
{

bool WantsWads(const Intake& intake);
/// Those that the configuration file asks for, one after the other; a level without them is given
/// up.
StepAnswer CheckImportWads(Intake& intake);

/// For a tom file whose wads are in a package that is known. True when they were imported; False,
/// also without a word, when none is known or the person does without.
bool OfferKnownWads(Intake& intake, const std::string& tomName);
/// For a level whose documents name the package that replaces the Level Editor's first wads. A
/// level runs without them too, which is told; one No is enough.
void OfferRevisedWads(Intake& intake);

} // namespace kestrova
