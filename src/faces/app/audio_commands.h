#pragma once

#include "app/command.h"

namespace kestrova
{

/// Sounds from one form to another.
std::span<const CommandRow> AudioCommands();

} // namespace kestrova
