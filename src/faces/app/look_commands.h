#pragma once

#include "app/command.h"

namespace kestrova
{

/// What the archive holds.
std::span<const CommandRow> LookCommands();

} // namespace kestrova
