#pragma once

#include "app/command.h"

namespace kestrova
{

/// What stands in the Level Editor's folder, and what takes its place.
std::span<const CommandRow> SwapCommands();

/// All that the backup has comes back; neither an archive nor a whole folder is needed.
bool BringOriginals(Run& run);

} // namespace kestrova
