#pragma once

#include "cli/command.h"

namespace kestrova
{

Exit RunSet(Run& run);

} // namespace kestrova
