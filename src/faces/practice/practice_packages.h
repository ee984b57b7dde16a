#pragma once

#include "practice/practice_folder.h"

namespace kestrova
{

/// Adds to the packages of a practice folder what is made of their other files and of programs:
/// the configuration of the level that needs every step, the setup programs, the programs of the
/// Level Editor's setup and its list of files.
Status FinishPackages(const Path& packages, const PracticePrograms& programs);

} // namespace kestrova
