#pragma once

#include "intake/new_level.h"

/// The commands that bring a level into the archive and change one of it.
namespace kestrova
{

/// Shows the level to the person, or fills it, until it is accepted (True) or given up. It is
/// opened already.
using ShowLevel = std::function<bool(NewLevel& level)>;

/// Makes a new level's record and folders, lets `show` fill them, and takes the level into the
/// archive. Without an accept nothing of it stays. `code` gets the level's number. A run that is
/// killed leaves its folder and a note of it.
bool AddLevel(Session& session, ProgressScope& progress, const ShowLevel& show, LevelCode& code);

/// The same for a level that the archive has: it is as before unless accepted and saved.
bool EditLevel(Session& session, ProgressScope& progress, LevelCode code, const ShowLevel& show);

/// Offers to clear the folder of a level whose adding was cut off. A folder that the person wants
/// to keep is not asked for again.
void OfferLeftIntake(Session& session);

} // namespace kestrova
