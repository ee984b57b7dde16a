#pragma once

#include "app/command.h"

namespace kestrova
{

/// What stands in the Level Editor's folder, and what takes its place.
std::span<const CommandRow> SwapCommands();

} // namespace kestrova
