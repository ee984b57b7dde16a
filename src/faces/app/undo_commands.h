#pragma once

#include "app/command.h"

namespace kestrova
{

/// Changes undone, and done again.
std::span<const CommandRow> UndoCommands();

} // namespace kestrova
