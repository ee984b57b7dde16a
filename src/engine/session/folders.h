#pragma once

#include "core/names.h"

namespace kestrova
{

class DiscReader;

/// Where things lie in one run. A value: whoever works in another folder hands on another one.
struct Folders {
    Path program; ///< settings, backup, history, the original configuration's level folder
    Path trle;    ///< the Level Editor's; empty while none was found
    Path levels;  ///< the archive's, with a folder for each of its levels
    /// Finds levels whose files lie on discs; null where none can be found.
    DiscReader* discs = nullptr;

    /// The copy of the original Level Editor's files.
    [[nodiscard]] Path Backup() const;
    /// The file that tells which level stands in the Level Editor's folder.
    [[nodiscard]] Path Marker() const;
};

} // namespace kestrova
