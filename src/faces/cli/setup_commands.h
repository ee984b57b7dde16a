#pragma once

#include "cli/command.h"

namespace kestrova
{

Exit RunBackup(Run& run);
Exit RunPractice(Run& run);
Exit RunSetup(Run& run);

} // namespace kestrova
