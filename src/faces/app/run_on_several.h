#pragma once

#include "app/command.h"

namespace kestrova
{

/// A command of a window on several chosen levels, if its row says how: one question, one progress
/// with a Stop, one list of what was not done. What a single level would ask beside that is
/// answered with what keeps things as they are. Refused while an operation runs; false when not all
/// of it was done.
bool RunOnSeveral(const CommandRow& row, Session& session, Face& face,
                  const std::vector<LevelCode>& levels);

} // namespace kestrova
