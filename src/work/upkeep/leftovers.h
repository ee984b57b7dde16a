#pragma once

#include "formats/preferences.h"
#include "session/archive.h"
#include "session/folders.h"
#include "session/host.h"

/// What killed programs left: files half written, folders to work in, an edit that nobody ended.
namespace kestrova
{

/// Where the programs note the folders that they work in.
Path WorkNotes(const Folders& folders);

/// Clears what belongs to no process that runs and to no work that waits, in the program's folder
/// and wherever one that ended noted that it worked; gives a level back the files that a killed
/// edit changed. To be called with the locks held, after what was interrupted has been mended, and
/// after a load. What cannot go stays noted.
void ClearLeftovers(Host& host, const Folders& folders, const Archive& archive);
/// The same in every folder below the program's, the Level Editor's and the archive's.
void ClearAllLeftovers(Host& host, const Folders& folders, const Archive& archive,
                       const PreferencesRecord& preferences);

/// What could not be removed, for the doctor. Touches nothing.
std::vector<Path> LeftoversThatStay(const Folders& folders);

} // namespace kestrova
