#pragma once

#include "app/command.h"

namespace kestrova
{

/// The configuration file that travels with a level.
std::span<const CommandRow> ConfigCommands();

} // namespace kestrova
