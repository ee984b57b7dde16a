#pragma once

#include "intake/intake.h"
#include "tools/tools.h"

/// Whether somebody else's program may install a level, and what it can reach.
namespace kestrova
{

/// Why the program cannot be run at all, told; nothing was touched. `into`: as the person says.
bool MayRunInstaller(Intake& intake, const Path& program);

/// A copy of a program of this system may have come in without the right to be started.
Status MakeStartable(const Path& program);

/// What a person has to know before somebody else's program runs: what it can reach here.
std::string WhatProgramsReach(const Folders& folders, const Tools& tools);

} // namespace kestrova
