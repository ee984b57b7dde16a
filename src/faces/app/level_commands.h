#pragma once

#include "app/command.h"

namespace kestrova
{

/// One level: taken out, measured, its author, packed for others.
std::span<const CommandRow> LevelCommands();

} // namespace kestrova
