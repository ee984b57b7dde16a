#pragma once

#include "formats/disc_note.h"

/// What the hard disk has of a level that lies on a disc.
namespace kestrova
{

/// True when the game's level files lie in that folder, compressed or not; what cannot be listed
/// has none.
bool HasLevelFile(const Path& files);

/// True when that `files` folder does not have the whole level: it has no level file, as where only
/// a document was copied from the disc, or a part alone of what was put on it, as where bringing it
/// back was broken off. `noted` is what is known of the disc; without it the level's size of
/// `filesSize` bytes tells. A folder that holds anything else beside is a level of its own.
bool IsPartOfLevel(const Path& files, const NotedLevel* noted, std::int32_t filesSize);

} // namespace kestrova
