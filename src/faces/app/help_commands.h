#pragma once

#include "app/command.h"

namespace kestrova
{

/// What is wrong, and where help is.
std::span<const CommandRow> HelpCommands();

} // namespace kestrova
