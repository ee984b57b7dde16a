#pragma once

#include "core/names.h"
#include "core/result.h"
#include "session/folders.h"

/// What tells one folder from another in the entries of undoing, wherever its disk is mounted.
namespace kestrova
{

/// The token of the program's folder, made when it has none. A copy of the folder gets another one:
/// neither clears what the other keeps beside the levels of an archive that both use.
Result<std::string> TokenOfProgram(const Folders& folders);
/// The token that the folder has; empty without one.
std::string KnownTokenOfProgram(const Folders& folders);

/// The token of a level's folder, made when it has none. It goes where the folder goes.
Result<std::string> TokenOfLevel(const Path& home);
/// The token that the folder has; empty without one. A failure while that cannot be told.
Result<std::string> KnownTokenOfLevel(const Path& home);

} // namespace kestrova
