#pragma once

#include "archive/level_folders.h"
#include "history/change_parts.h"

namespace kestrova
{

/// Copies a kept file back, a picture of the level's to its screen-shots, anything else into the
/// level's live folder: a savegame into its old slot when that is
/// free, otherwise the lowest free one. The path it got, or why not.
Result<Path> BringBack(const ChangeParts& parts, LevelCode code, const std::string& id);

} // namespace kestrova
