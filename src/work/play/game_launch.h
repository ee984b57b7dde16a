#pragma once

#include "formats/preferences.h"
#include "platform/process.h"
#include "session/folders.h"
#include "tools/tools.h"

namespace kestrova
{

/// How the game would be started: as it is, or through Wine when the file begins with `MZ`; the
/// prefix is the folder above `drive_c` on the way to the game. The failure's reason says in words
/// what is missing.
Result<platform::Launch> GameLaunch(const Folders& folders, const PreferencesRecord& preferences,
                                    const Tools& tools);

} // namespace kestrova
