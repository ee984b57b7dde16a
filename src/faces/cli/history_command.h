#pragma once

#include "cli/command.h"

namespace kestrova
{

Exit RunHistory(Run& run);

/// What was kept of a level, oldest first: lines, or entries of the result's array.
bool AddHistory(Run& run, LevelCode code);
/// Brings a kept file back and says where it is, or why not.
bool BringBackTold(Run& run, LevelCode code, const std::string& id);

} // namespace kestrova
