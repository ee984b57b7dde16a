#pragma once

#include "formats/swap_journal.h"

/// Which files are the player's: savegames, notes and shots of a level's slots.
namespace kestrova
{

/// `savegame.*`, `shot*.jpg`, `note*.txt`: what a swap moves.
std::vector<std::string> StatePatterns();
Result<std::vector<Path>> StateFilesIn(const Path& folder);
/// A savegame, note or shot of any kind, `shotN.bmp` included: what nothing may ever lose. Of files
/// in the root of the Level Editor's folder, and in folders that hold nothing but state.
bool IsPlayersFile(std::string_view name);
/// The same for a path below the Level Editor's folder: below its root nothing is state, whatever
/// it is called.
bool IsPlayersPlace(const Path& relative);
/// Names and contents' hashes; fails with the first file that cannot be read.
Result<std::vector<StateFile>> HashesOf(const std::vector<Path>& files);

} // namespace kestrova
