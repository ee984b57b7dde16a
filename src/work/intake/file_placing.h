#pragma once

#include "core/folder_names.h"
#include "intake/package_sources.h"

namespace kestrova
{

/// How a file comes into the level's folder.
struct Placing {
    Replace replace;
    bool keepSource; ///< copied, otherwise moved
    Path package;    ///< the one that it comes from, whose place it may take; empty: none
};

/// The level's folder as the report's operation knows it.
FolderNames& NamesOf(const Path& folder, SourceReport& report);

/// One file into the folder, under a name that can be read.
Status PutFile(Host& host, const Path& file, const Path& folder, const Placing& placing,
               ProgressScope& progress, SourceReport& report);

} // namespace kestrova
