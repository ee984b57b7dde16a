#pragma once

#include "app/command.h"

namespace kestrova
{

/// All levels: their form, their place, what the archive knows of them.
std::span<const CommandRow> UpkeepCommands();

} // namespace kestrova
