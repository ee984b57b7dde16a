#pragma once

#include "formats/archive_file.h"
#include "session/folders.h"

namespace kestrova
{

/// What a level is known to have and its stored files lack. It is known from `tr4.inf`, from the
/// record's readme and from the size that the record noted.
struct LevelGaps {
    std::vector<std::string> files; ///< of the game: `level1.tr4`
    std::vector<std::string> cut;   ///< those that are there, shorter than they were
    std::vector<std::string> texts; ///< the readme behind [More info]
    double bytes = 0; ///< so much less than noted, when no file is known by name; otherwise 0
    double noted = 0; ///< that size, with `bytes`
};
/// One listing and no file's content; nothing is touched. A level on a disc has no gaps that could
/// be seen.
Result<LevelGaps> GapsOf(const Folders& folders, const LevelRecord& level);
/// The gaps without which the level cannot be played whole, as a person reads them.
std::vector<std::string> PlayGaps(const LevelGaps& gaps);
/// The same with the readme.
std::vector<std::string> AllGaps(const LevelGaps& gaps);

} // namespace kestrova
