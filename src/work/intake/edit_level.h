#pragma once

#include "intake/add_level.h"

namespace kestrova
{

/// Lets `show` change a level that the archive has: it is as before unless accepted and saved.
bool EditLevel(Session& session, ProgressScope& progress, LevelCode code, const ShowLevel& show);

/// Reads the draft of such a level; a stored one is expanded first where the preferences want that.
/// False, with a message, when that failed.
bool OpenEdit(Intake& intake);

/// What the edit did to the level's files is undone; shows its failure. To be called when the level
/// was not taken over, after `GiveUp` or a failed `Accept`.
void PutBack(Intake& intake);

} // namespace kestrova
