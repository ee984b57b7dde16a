#pragma once

#include "editor/wad_files.h"
#include "editor/wad_scripts.h"

/// The new levels of an import in the person's own scripts, which are compiled and take their place
/// in both trees.
namespace kestrova
{

/// The files of levels in a folder of one tree, by name.
Result<std::vector<std::string>> LevelsIn(const Folders& folders, ImportTree tree);

/// Merges and compiles. `newLevels`: files of levels that the backup did not have. Fails as the
/// steps of `wad_files.h` do; all else is told.
Status TakeNewLevels(const WadWork& work, const std::vector<std::string>& newLevels,
                     const AskLevelName& askName);

} // namespace kestrova
