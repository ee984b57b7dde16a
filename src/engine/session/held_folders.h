#pragma once

#include "session/folder_locks.h"
#include "session/folders.h"

namespace kestrova
{

/// Takes a writer's lock on a folder; a folder that is not there needs none. The failure's sentence
/// names the holder.
Status HoldFolder(FolderLocks& locks, const Path& folder);

/// The lock of the archive's writable folder in place of the one that was held for the archive
/// before, which is still held after a failure.
Status HoldArchiveFolder(FolderLocks& locks, const Folders& folders, const Path& folder);

/// The locks of a writer: the program's folder, the Level Editor's, the archive's writable one, as
/// far as they are there. Repeatable.
Status HoldFolders(FolderLocks& locks, const Folders& folders);

} // namespace kestrova
