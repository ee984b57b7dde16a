#pragma once

#include "cli/command.h"

namespace kestrova
{

Exit RunMend(Run& run);
Exit RunOriginal(Run& run);
Exit RunPlan(Run& run);
Exit RunPlay(Run& run);
Exit RunVerify(Run& run);

} // namespace kestrova
