#pragma once

#include "intake/intake.h"

/// Levels that come as a program, which unpacks or installs them itself.
namespace kestrova
{

/// The program among the files, in their order, that sets the level up: the last one, but for
/// decoders and readers of texts; one called `setup.exe` is it at once. Empty when there is none.
Path FindSetupExe(const std::vector<Path>& files);

/// The folder holds no level yet, and the person was not asked about a program.
bool MayBeInsideProgram(const Intake& intake);
/// The level that the program among the files installs becomes the draft's, after a question.
/// `code`: the kind that the level's configuration file names, trimmed; empty: unknown. Without
/// such a program, or when the draft holds a level, nothing is done.
StepAnswer RunExeInstall(Intake& intake, const std::string& code);
/// The same where nobody named a kind.
StepAnswer InstallFromProgram(Intake& intake);

} // namespace kestrova
