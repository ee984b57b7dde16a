#pragma once

#include "app/command.h"

namespace kestrova
{

/// What was kept of the player's files and of the Level Editor's.
std::span<const CommandRow> HistoryCommands();

/// What was kept of a level, oldest first: lines, or entries of the result's array.
bool AddHistory(Run& run, LevelCode code);
/// Brings a kept file back and says where it is, or why not.
bool BringBackTold(Run& run, LevelCode code, const std::string& id);

} // namespace kestrova
