#pragma once

#include "core/files.h"
#include "formats/archive_file.h"

namespace kestrova
{

/// What a folder has that is called like a level's.
struct LevelsFound {
    std::vector<LevelCode> codes;        ///< each once, sorted
    std::vector<std::string> passedOver; ///< names that no record of a list can lead to
    std::vector<Path> setAside;          ///< folders of levels that were set aside
};
Result<LevelsFound> FindLevelFolders(const Path& folder);

} // namespace kestrova
