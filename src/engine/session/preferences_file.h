#pragma once

#include "formats/preferences.h"
#include "session/folders.h"
#include "session/settings.h"

namespace kestrova
{

enum class PreferencesFound {
    None, ///< they are the first-run values then
    Whole,
    Damaged ///< as after a power cut: what could be read counts, the rest is as at a first run
};
/// Reads `Kestrova.prf`, folders in their exact form.
PreferencesFound ReadPreferencesFile(const Folders& folders, PreferencesRecord& preferences,
                                     const ProgramSettings& settings);
/// Keeps copies of `Kestrova.prf` and `kestrova.ini` under free names beside them, those of both
/// that are damaged, and writes whole ones in their place. Answers the copies.
Result<std::vector<Path>> MendPreferences(const Folders& folders, PreferencesRecord& preferences,
                                          ProgramSettings& settings);
/// Writes `Kestrova.prf` and `kestrova.ini`; nothing when they hold this already.
Status WritePreferencesFile(const Folders& folders, PreferencesRecord& preferences,
                            ProgramSettings& settings);
/// The same after every change that must not be lost; the failure says so in words.
Status SavePreferencesNow(const Folders& folders, PreferencesRecord& preferences,
                          ProgramSettings& settings);

} // namespace kestrova
