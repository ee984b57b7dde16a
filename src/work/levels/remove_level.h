#pragma once

#include "formats/change_note.h"
#include "session/session.h"

/// Levels coming into the archive and leaving it.
namespace kestrova
{

enum class LevelFolders { Ask, Remove, Keep };
/// Takes a level out of the archive, out of the Level Editor's folder first when it stands there,
/// and removes its folders when wanted. Nothing of the player is removed that the history has not.
bool RemoveLevel(Session& session, LevelCode code, LevelFolders folders = LevelFolders::Ask);
/// Removes a level once more whose removal was undone, which `undone` is the entry of; the new
/// entry takes its place. The folder goes as it went before; it stays when it cannot be set aside.
bool RemoveLevelAgain(Session& session, const Change& undone);

} // namespace kestrova
