#pragma once

#include "core/files.h"

/// What a person gives as several levels at once, taken apart into the sources of single levels.
namespace kestrova
{

struct QueueSource {
    Path place;
    bool holdsNone = false;        ///< a folder in which nothing looks like a level
    bool isArchive = false;        ///< a list of levels, which is loaded and not added
    bool isTwin = false;           ///< the same file or folder was given before it
    std::size_t packagesBelow = 0; ///< of a sub-folder that is no level
};

/// True for the file of an archive's list.
bool IsArchiveFile(const Path& file);
/// True for a folder that is one level: level files lie at its top, or in a `data` folder there.
bool IsLevelFolder(const Path& folder);

/// Each file and each folder that is a level is one source. Any other folder stands for its
/// packages, and for those of its sub-folders that have level files in them, sorted by name; other
/// sub-folders with packages are named, what else lies there is passed over. What is not there, or
/// cannot be read, stays a source: to take it tells why.
std::vector<QueueSource> SourcesOfLevels(const std::vector<Path>& given,
                                         const Heartbeat& heartbeat = {});

} // namespace kestrova
