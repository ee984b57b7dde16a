#pragma once

#include "cli/command.h"

namespace kestrova
{

/// In the order of the manual.
std::span<const CommandRow> CommandTable();
const CommandRow* FindCommand(std::string_view name);
std::span<const OptionRow> AllOptions();

} // namespace kestrova
