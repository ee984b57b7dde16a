#pragma once

#include "app/command.h"

namespace kestrova
{

/// The Level Editor's folder, its backup, a folder to practise with.
std::span<const CommandRow> SetupCommands();

} // namespace kestrova
