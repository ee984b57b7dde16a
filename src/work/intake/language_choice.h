#pragma once

#include "intake/intake.h"

namespace kestrova
{

/// Of several language files beside `script.dat` one stays: the one that is called as the player's
/// own, otherwise the one that the person names; a missing `script.dat` comes from the backup.
/// False, with a message, when a file could not be copied or deleted.
bool ChooseLanguageFile(Host& host, const Folders& folders, const Path& folder);

/// The same for a draft's folder.
StepAnswer ChooseLanguage(Intake& intake);

} // namespace kestrova
