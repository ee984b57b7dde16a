#pragma once

#include "app/command.h"

namespace kestrova
{

/// What the Level Editor's own programs work on.
std::span<const CommandRow> EditorCommands();

} // namespace kestrova
