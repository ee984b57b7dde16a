#pragma once

#include "formats/preferences.h"
#include "session/folders.h"
#include "session/settings.h"

namespace kestrova
{

/// Reads `Kestrova.prf`, folders in their exact form. False when there is none:
/// they are the first-run values then.
bool ReadPreferencesFile(const Folders& folders, PreferencesRecord& preferences,
                         const ProgramSettings& settings);
/// Writes `Kestrova.prf` and `kestrova.ini`; nothing when they hold this already.
Status WritePreferencesFile(const Folders& folders, PreferencesRecord& preferences,
                            ProgramSettings& settings);
/// The same after every change that must not be lost; the failure says so in words.
Status SavePreferencesNow(const Folders& folders, PreferencesRecord& preferences,
                          ProgramSettings& settings);

} // namespace kestrova
