#pragma once

#include "app/command.h"

namespace kestrova
{

/// A level's screen-shots.
std::span<const CommandRow> ShotsCommands();

} // namespace kestrova
