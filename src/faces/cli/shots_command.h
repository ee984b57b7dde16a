#pragma once

#include "cli/command.h"

namespace kestrova
{

Exit RunShots(Run& run);

} // namespace kestrova
