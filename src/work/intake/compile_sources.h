#pragma once

#include "intake/intake.h"

/// A level that came as sources becomes one that the game can read.
namespace kestrova
{

/// Tom files are there, and they are to be compiled.
bool HasSourcesToCompile(const Intake& intake);
/// The step of accepting: compiles them, after a question where the draft wants one. Whatever
/// becomes of what was asked, the level goes on.
StepAnswer CompileSources(Intake& intake);

/// `Pul_CompileTom`: sees to the wads of each tom file, with the assistant where the face has it;
/// compiles in the Level Editor's folder, which comes back as it was; the results take the place of
/// tom files, wads and samples. Where the automatic way fails or is turned off, a person goes on by
/// hand, if the face has a window for it. False, with words, unless all of it was done.
bool CompileLevel(Intake& intake);

} // namespace kestrova
