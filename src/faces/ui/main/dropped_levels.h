#pragma once

#include "core/names.h"

#include <vector>

namespace kestrova
{

/// What of dropped files may be levels. Pictures and savegames are for the chosen level.
std::vector<Path> LevelsAmong(std::vector<Path> paths);

} // namespace kestrova
