#pragma once

#include "originals/loan_rest.h"
#include "session/folders.h"
#include "tools/bounded_run.h"

namespace kestrova
{

/// Runs the Level Editor's `script.exe` on the sources in its folder `script`, which become
/// `script.dat` and one `.dat` for each language; `languageDat` is the one that counts
/// (`english.dat`). Unless both came out, the results of the last time are in their place again,
/// after a kill too. Those that nothing else holds are in the vault before they go. `rest`: what
/// the compiler did outside of that folder, and what is undone.
Status CompileScript(Machine& machine, const Folders& folders, const Tools& tools,
                     const std::string& languageDat, ProgressScope& progress, RestReturn& rest,
                     const RunBounds& bounds = {});

} // namespace kestrova
