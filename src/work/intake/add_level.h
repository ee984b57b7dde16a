#pragma once

#include "intake/intake.h"

namespace kestrova
{

/// Shows the level to the person, or fills it, until it is accepted (True) or given up. Its texts
/// and its folder have been read already.
using ShowLevel = std::function<bool(Intake& level)>;

/// Makes a new level's record and folders, lets `show` fill them, and takes the level into the
/// archive. Without an accept nothing of it stays. `code` gets the level's number. A run that is
/// killed leaves its folder and a note of it (`intake/left_intake.h`).
bool AddLevel(Session& session, ProgressScope& progress, const ShowLevel& show, LevelCode& code);

/// Reads a new level's draft, whose folders are made. False, with a message, when that failed.
bool OpenNewLevel(Intake& intake);

} // namespace kestrova
