#pragma once

#include "app/command.h"

namespace kestrova
{

/// Whether what is stored and what stands in the Level Editor's folder is whole, and what is not
/// brought back.
std::span<const CommandRow> CheckCommands();

} // namespace kestrova
