#pragma once

#include "intake/intake.h"

/// Levels that come as a program, which unpacks or installs them itself.
namespace kestrova
{

/// The program among the files, in their order, that sets the level up: the last one, but for
/// decoders and readers of texts; one called `setup.exe` is it at once. Empty when there is none.
Path FindSetupExe(const std::vector<Path>& files);
/// The kind of such a program, empty when nobody can tell, or when it cannot be read; `name` gets
/// the installer's name.
std::string DetectInstaller(const Path& program, std::string& name);

/// The folder holds no level yet, and the person was not asked about a program.
bool MayBeInsideProgram(const Intake& intake);
/// The level that the program among the files installs becomes the draft's, after a question.
/// `code`: the kind that the level's configuration file names, trimmed; empty: unknown. Without
/// such a program, or when the draft holds a level, nothing is done. Where nobody can be asked, and
/// the draft does not say where the program puts its files, it is not run; the words that do are
/// told.
StepAnswer RunExeInstall(Intake& intake, const std::string& code);
/// The same where nobody named a kind.
StepAnswer InstallFromProgram(Intake& intake);

} // namespace kestrova
