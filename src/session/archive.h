#pragma once

#include "records/archive_file.h"

namespace kestrova
{

/// The archive in memory, one value: a copy of it is the way back.
struct Archive {
    ArchiveHeader header{};
    std::vector<LevelRecord> levels{};
    bool dirty = false; ///< memory differs from the file
};

} // namespace kestrova
