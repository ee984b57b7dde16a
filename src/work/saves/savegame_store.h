#pragma once

#include "session/session.h"

namespace kestrova
{

/// The folder with a level's live savegames: the Level Editor's when the level stands there,
/// otherwise the level's own store. A failure when nobody can tell which level stands there.
Result<Path> CurrentSlotsFolder(const Folders& folders, const Archive& archive, LevelCode code);
/// Fills both savegame records of the session for a level: defaults first, over them what the
/// files hold. A file that is missing is created where its folder allows it; failures of that are
/// ignored, the records then live in memory only.
Status LoadSavegameStore(Session& session, LevelCode code);

} // namespace kestrova
