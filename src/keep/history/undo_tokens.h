#pragma once

#include "core/names.h"
#include "core/result.h"
#include "session/folders.h"

/// What tells one program's folder from another in the entries of undoing. Levels' folders:
/// `archive/level_token.h`.
namespace kestrova
{

/// The token of the program's folder, made when it has none. A copy of the folder gets another one:
/// neither clears what the other keeps beside the levels of an archive that both use.
Result<std::string> TokenOfProgram(const Folders& folders);
/// The token that the folder has; empty without one.
std::string KnownTokenOfProgram(const Folders& folders);

} // namespace kestrova
