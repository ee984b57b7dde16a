#pragma once

#include "cli/command.h"

namespace kestrova
{

Exit RunCurrent(Run& run);
Exit RunDoctor(Run& run);
Exit RunInfo(Run& run);
Exit RunLevels(Run& run);

} // namespace kestrova
