#pragma once

#include "cli/command.h"

namespace kestrova
{

Exit RunSaves(Run& run);

} // namespace kestrova
