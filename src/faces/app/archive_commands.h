#pragma once

#include "app/command.h"

namespace kestrova
{

/// Archives: made, loaded, saved.
std::span<const CommandRow> ArchiveCommands();

} // namespace kestrova
