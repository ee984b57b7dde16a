#pragma once

#include "formats/archive_file.h"

namespace kestrova
{

/// The archive in memory, one value: a copy of it is the way back.
struct Archive {
    ArchiveHeader header{};
    std::vector<LevelRecord> levels{};
    /// The file that the list was read from or written to. Empty while the list belongs to none:
    /// then nothing is written, and no level comes in or goes.
    Path file{};
    bool dirty = false; ///< the list differs from the file

    [[nodiscard]] bool Loaded() const { return !file.empty(); }
    /// The record with that code; nothing when there is none.
    [[nodiscard]] const LevelRecord* Find(LevelCode code) const;
};

} // namespace kestrova
