#pragma once

#include "formats/preferences.h"
#include "session/folders.h"
#include "session/host.h"

/// What there is of the copy of the original Level Editor's files, and of which folder it is.
namespace kestrova
{

enum class BackupState { Missing, Present };
Result<BackupState> LookAtBackup(const Folders& folders);
/// True while nothing can come back from the backup: it is not there, or cannot be listed.
bool BackupIsAway(const Folders& folders);
/// The folder that the backup is of, when that is another one than the Level Editor's folder in
/// use and its files are not the same. Compares contents only while the folder was newly chosen; a
/// failure when the backup cannot be listed for that.
Result<std::optional<Path>> BackupOfAnotherFolder(Host& host, const Folders& folders,
                                                  const PreferencesRecord& preferences);
/// The same by what was noted alone: nothing is read but that.
Result<std::optional<Path>> BackupSeemsOfAnother(const Folders& folders);

} // namespace kestrova
