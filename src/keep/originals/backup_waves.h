#pragma once

#include "formats/preferences.h"
#include "session/folders.h"

/// The music that a compact backup does not hold, known by name at least.
namespace kestrova
{

/// Notes the names of the waves that stand in the Level Editor's folder, behind the folder's own.
void NoteWaves(const Folders& folders);
/// Waves that stood in the Level Editor's folder when its compact backup was made, and do not now.
Result<std::vector<std::string>> MissingWaves(const Folders& folders,
                                              const PreferencesRecord& preferences);

} // namespace kestrova
