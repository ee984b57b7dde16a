#pragma once

#include "session/session.h"
#include "swap/swap_records.h"

/// A level's state: savegames, shots and notes of its slots. While the level stands in the Level
/// Editor's folder they are live there; else they lie in its store `backup_savegames`.
namespace kestrova
{

/// `savegame.*`, `shot*.jpg`, `note*.txt`: what a swap moves.
std::vector<std::string> StatePatterns();
std::vector<Path> StateFilesIn(const Path& folder);
/// A savegame, note or shot of any kind, `shotN.bmp` included: what nothing may ever lose.
bool IsPlayersFile(std::string_view name);
/// Names and contents' hashes; fails with the first file that cannot be read.
Result<std::vector<StateFile>> HashesOf(const std::vector<Path>& files);

/// Where a level's live state is now.
Path LiveStateFolder(const Session& session, LevelCode code);

/// Where no two names may differ in case only: of twins the newest stays, the others go to the
/// history.
Status SettleTwins(Session& session, LevelCode code, const Path& folder);

/// Copies what is live in the Level Editor's folder into a level's store without emptying it, read
/// back and flushed. Where a name is taken with another content the newer file wins and the older
/// goes to the history. `live` gets what was found.
Status StoreLiveState(Session& session, LevelCode owner, const Path& store,
                      std::vector<StateFile>& live);
/// Deletes live files that still are what the list says; what a game wrote since stays and is kept
/// in the history as well.
Status DropLiveState(Session& session, LevelCode owner, const std::vector<StateFile>& live);

/// Makes a store hold exactly `wanted` again, contents from the history or from what is live; what
/// else it holds goes to the history first.
Status PutStoreBack(Session& session, LevelCode code, const Path& store,
                    const std::vector<StateFile>& wanted);

/// Copies a store into the Level Editor's folder, every copy compared and flushed. What it would
/// replace there is kept first: players' files in the history of `before`, anything else with the
/// originals. `replaced` gets the names of the latter, `failed` those that did not come in.
void BringStateIn(Session& session, LevelCode code, LevelCode before, ActivityLog* log,
                  std::vector<std::string>& replaced, std::vector<std::string>& failed);

/// A file of the Level Editor's folder that is about to be replaced or deleted and that the backup
/// does not hold goes to `history/originals`; nothing when the backup has these bytes.
Status KeepOriginal(Session& session, const Path& relative);

} // namespace kestrova
