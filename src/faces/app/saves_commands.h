#pragma once

#include "app/command.h"

namespace kestrova
{

/// A level's savegames.
std::span<const CommandRow> SavesCommands();

} // namespace kestrova
