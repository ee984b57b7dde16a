#pragma once

#include "session/session.h"

namespace kestrova
{

/// Reads `Kestrova.prf` into the session, folders in their exact form. False when there is none:
/// the session then has the first-run values.
bool ReadPreferencesFile(Session& session);
/// Writes `Kestrova.prf` and `kestrova.ini`; nothing when they hold this already.
Status WritePreferencesFile(const Folders& folders, PreferencesRecord& preferences,
                            ProgramSettings& settings);
/// The same after every change that must not be lost; the failure says so in words.
Status SavePreferencesNow(const Folders& folders, PreferencesRecord& preferences,
                          ProgramSettings& settings);

} // namespace kestrova
