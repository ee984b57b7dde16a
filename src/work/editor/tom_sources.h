#pragma once

#include "core/files.h"
#include "session/folders.h"

/// What of a folder are sources of levels.
namespace kestrova
{

struct TomSources {
    std::vector<Path> toms;
    std::vector<Path> wads;      ///< files of wad sets, the tom files with them
    std::vector<Path> samples;   ///< waves but those for the game's `audio` folder
    std::vector<Path> misplaced; ///< waves for that folder whose name is no number of a track
};

/// Some of them are tom files.
bool HasTomFiles(const std::vector<Path>& files);
/// Sorts the files of one folder, in their order. A picture or a text is of a wad set when a tom
/// or wad file of its stem is there.
TomSources SourcesAmong(const std::vector<Path>& files);
/// Of those, what one tom file needs: its own wad set, and all samples.
TomSources SourcesOfTom(const TomSources& sources, const Path& tom);
/// The first tom file whose wads are neither among the sources nor in the Level Editor's folder;
/// empty when all have some.
Result<Path> TomWithoutWads(const Folders& folders, const TomSources& sources);

} // namespace kestrova
