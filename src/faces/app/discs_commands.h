#pragma once

#include "app/command.h"

#include <span>

namespace kestrova
{

/// Drives, discs, and images of discs.
std::span<const CommandRow> DiscsCommands();

} // namespace kestrova
