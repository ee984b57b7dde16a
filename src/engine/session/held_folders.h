#pragma once

#include "session/folder_locks.h"
#include "session/folders.h"
#include "session/host.h"

namespace kestrova
{

/// Takes a writer's lock on a folder; a folder that is not there needs none. False, with words that
/// name the holder.
bool HoldFolder(Host& host, FolderLocks& locks, const Path& folder);

/// The lock of the archive's writable folder in place of the one that was held for the archive
/// before. False, with words: then that one is still held.
bool HoldArchiveFolder(Host& host, FolderLocks& locks, const Folders& folders, const Path& folder);

/// The locks of a writer: the program's folder, the Level Editor's, the archive's writable one, as
/// far as they are there. False with words that name the holder. Repeatable.
bool HoldFolders(Host& host, FolderLocks& locks, const Folders& folders);

} // namespace kestrova
