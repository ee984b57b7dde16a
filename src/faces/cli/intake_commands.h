#pragma once

#include "cli/command.h"

namespace kestrova
{

Exit RunAdd(Run& run);
Exit RunEdit(Run& run);

} // namespace kestrova
