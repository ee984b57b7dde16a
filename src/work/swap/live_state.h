#pragma once

#include "archive/level_folders.h"
#include "core/activity_log.h"
#include "history/players_files.h"
#include "originals/vault.h"
#include "session/session.h"

/// A level's state: savegames, shots and notes of its slots. While the level stands in the Level
/// Editor's folder they are live there; else they lie in its store `backup_savegames`.
namespace kestrova
{

/// Keeps the state files of a folder in the level's history.
Status KeepStateIn(Machine& machine, const Folders& folders, const ProgramSettings& settings,
                   const LevelPlace& level, const Path& folder);

/// Where no two names may differ in case only: of twins the newest stays, the others go to the
/// history, and are named.
Status SettleTwins(Host& host, Machine& machine, const ProgramSettings& settings,
                   const Folders& folders, const LevelPlace& level, const Path& folder);

/// State of other levels that a swap had to leave in the folder, still as it was noted; one that
/// was noted by its name alone counts as long as it is there.
Result<std::vector<OwnedFile>> StrangersThere(const Folders& folders,
                                              const std::vector<OwnedFile>& noted);
/// The state in the Level Editor's folder without those.
Result<std::vector<Path>> LiveStateFiles(const Folders& folders,
                                         const std::vector<OwnedFile>& strangers);

/// Copies what is live in the Level Editor's folder into a level's store without emptying it, read
/// back and flushed. Where a name is taken with another content the newer file wins and the older
/// goes to the history. `live` gets what was found.
Status StoreLiveState(Machine& machine, const Folders& folders, const ProgramSettings& settings,
                      const LevelPlace& owner, const Path& store, std::vector<StateFile>& live,
                      const std::vector<OwnedFile>& strangers = {});
/// Deletes live files that still are what the list says. What a game wrote since stays and is kept
/// in the history as well; what cannot be read or deleted now stays too. `left` gets all state that
/// is still in the folder.
Status DropLiveState(Machine& machine, const Folders& folders, const ProgramSettings& settings,
                     const LevelPlace& owner, const std::vector<StateFile>& live,
                     std::vector<OwnedFile>& left);

/// Makes a store hold exactly `wanted` again, contents from the history or from what is live; what
/// else it holds goes to the history first.
Status PutStoreBack(Machine& machine, const Folders& folders, const ProgramSettings& settings,
                    const LevelPlace& level, const Path& store,
                    const std::vector<StateFile>& wanted);

/// What a level's store holds, to be copied into the folder.
Result<std::vector<Path>> StoredState(const Folders& folders, const LevelPlace& level);

/// What did not go smoothly when stored state was copied into the folder.
struct BroughtState {
    std::vector<std::string> replaced; ///< files that are no state, kept with the originals first
    std::vector<std::string> waiting;  ///< names of what did not come in and stays in the store
};
/// Copies stored state into the Level Editor's folder, every copy compared and flushed. What it
/// would replace there is kept first: players' files in the history of `before`, anything else with
/// the originals.
BroughtState BringStateIn(Machine& machine, const Folders& folders, const ProgramSettings& settings,
                          const Path& store, const std::vector<Path>& stored,
                          const LevelPlace& before, ActivityLog* log);
/// What had to wait in the store of the standing level comes in now, where its name is free.
void BringWaiting(Machine& machine, const Folders& folders, const Archive& archive);

} // namespace kestrova
