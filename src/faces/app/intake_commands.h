#pragma once

#include "app/command.h"

namespace kestrova
{

/// Levels coming in, and being edited.
std::span<const CommandRow> IntakeCommands();

} // namespace kestrova
