#pragma once

#include "intake/intake.h"

/// Whether a level's sources are all there, as its configuration file's list of files and its tom
/// files tell.
namespace kestrova
{

enum class Checking {
    Silent,     ///< the first thing that is wrong ends it, without a word
    Interactive ///< the person is told what is wrong, and may go on
};

/// The list of a configuration file that was applied, and then the tom files. A list that came from
/// elsewhere is not looked at.
bool CheckLevelFileList(Intake& intake, Checking checking);
/// Whether there are tom files, and wads for each of them; known packages of wads are offered.
bool CheckTomSources(Intake& intake, Checking checking);

} // namespace kestrova
