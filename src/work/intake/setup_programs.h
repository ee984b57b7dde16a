#pragma once

#include "intake/intake.h"

/// Levels that come as a program, which unpacks or installs them itself.
namespace kestrova
{

/// The program among the files, in their order, that sets the level up: the last one, but for
/// decoders and readers of texts; one called `setup.exe` is it at once. Empty when there is none.
Path FindSetupExe(const std::vector<Path>& files);
/// What that program is, and what a person can do instead of running it here.
std::string WordsOfSetupExe(const Path& program);

/// The folder holds no level yet, and the person was not told of a program.
bool MayBeInsideProgram(const Intake& intake);
/// Tells of the program that the level is still inside, if it is.
StepAnswer TellOfProgram(Intake& intake);

} // namespace kestrova
