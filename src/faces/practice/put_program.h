#pragma once

#include "core/files.h"

namespace kestrova
{

/// Whoever can read the file may run it.
Status MakeRunnable(const Path& program);

/// Copies a program to its place, where it can be run.
Status PutProgram(const Path& program, const Path& place);

} // namespace kestrova
