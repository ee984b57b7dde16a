#pragma once

#include "intake/intake.h"
#include "tools/bounded_run.h"

namespace kestrova
{

/// What a level needs of a program that installs it; `bounds` of its run.
struct ExeLevel {
    Path tempFolder;  ///< takes the level's files; it is empty
    std::string code; ///< the program's kind; empty: unknown
    RunBounds bounds = InstallerBounds();

    static RunBounds InstallerBounds();
};

/// Runs the program among the draft's files on the original Level Editor's folder, and finds out
/// what it did: what it wrote is in `tempFolder` afterwards, and the folder is as it was, whatever
/// happens (`originals/folder_handover.h`). False, told, when the level did not come of it.
bool InstallExeLevel(Intake& intake, const ExeLevel& level);

} // namespace kestrova
