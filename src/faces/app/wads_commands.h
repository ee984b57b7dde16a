#pragma once

#include "app/command.h"

#include <span>

namespace kestrova
{

/// Wad packages.
std::span<const CommandRow> WadsCommands();

} // namespace kestrova
