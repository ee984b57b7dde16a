#pragma once

#include "cli/command.h"

namespace kestrova
{

Exit RunLoad(Run& run);
Exit RunNew(Run& run);
Exit RunRemove(Run& run);
Exit RunSizes(Run& run);

} // namespace kestrova
