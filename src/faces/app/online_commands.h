#pragma once

#include "app/command.h"

namespace kestrova
{

/// Downloads and the list of web addresses.
std::span<const CommandRow> OnlineCommands();

} // namespace kestrova
