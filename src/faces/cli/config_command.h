#pragma once

#include "cli/command.h"

namespace kestrova
{

Exit RunConfig(Run& run);

} // namespace kestrova
