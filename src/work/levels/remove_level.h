#pragma once

#include "session/session.h"

/// Levels coming into the archive and leaving it.
namespace kestrova
{

enum class LevelFolders { Ask, Remove, Keep };
/// Takes a level out of the archive, out of the Level Editor's folder first when it stands there,
/// and removes its folders when wanted. Nothing of the player is removed that the history has not.
bool RemoveLevel(Session& session, LevelCode code, LevelFolders folders = LevelFolders::Ask);

} // namespace kestrova
