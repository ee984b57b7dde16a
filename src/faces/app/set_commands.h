#pragma once

#include "app/command.h"

namespace kestrova
{

/// What can be set.
std::span<const CommandRow> SetCommands();

} // namespace kestrova
