#pragma once

#include "intake/intake.h"

/// A level that came as sources becomes one that the game can read.
namespace kestrova
{

/// Tom files are there, and they are to be compiled.
bool HasSourcesToCompile(const Intake& intake);
/// Compiles them in the Level Editor's folder, which comes back as it was; their results take the
/// place of tom files, wads and samples. Refuses, with words, what could not be compiled.
StepAnswer CompileSources(Intake& intake);

} // namespace kestrova
