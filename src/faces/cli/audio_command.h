#pragma once

#include "cli/command.h"

namespace kestrova
{

Exit RunAudio(Run& run);

} // namespace kestrova
