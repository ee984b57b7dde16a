#pragma once

#include "swap/verify_level.h"

namespace kestrova
{

/// Reads every file of the backup of the originals, on all cores, against what was noted when it
/// was made. Of a fault `stored` is the file's path in the backup. What nobody noted is noted,
/// where that may be. `Missing`, in words, while there is no backup.
Result<CheckedLevel> VerifyBackup(const Folders& folders, Noting noting,
                                  const Heartbeat& beat = {});

} // namespace kestrova
