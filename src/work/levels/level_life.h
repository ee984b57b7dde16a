#pragma once

#include "session/session.h"

/// Levels coming into the archive and leaving it.
namespace kestrova
{

/// A new level's record (not yet in the archive) and its empty folders. A folder of that name that
/// holds anything is set aside and named. False, with a message, when no archive is loaded or the
/// folders cannot be made.
bool BeginNewLevel(Session& session, LevelRecord& level);
/// Puts the record behind the others, its sizes into the totals, saves, refreshes the list and
/// selects it. False, with a message, when it could not be saved: the archive is as it was then.
bool FinishNewLevel(Session& session, const LevelRecord& level);
/// Removes the folders of a level that did not come in.
void DropNewLevel(Session& session, const LevelRecord& level);

/// A changed record in place of the one with its code, its sizes into the totals, saved, the list
/// refreshed. False, with a message, when it could not be saved: the archive is as it was then.
bool ReplaceLevel(Session& session, const LevelRecord& level);

enum class LevelFolders { Ask, Remove, Keep };
/// Takes a level out of the archive, out of the Level Editor's folder first when it stands there,
/// and removes its folders when wanted. Nothing of the player is removed that the history has not.
bool RemoveLevel(Session& session, LevelCode code, LevelFolders folders = LevelFolders::Ask);

} // namespace kestrova
