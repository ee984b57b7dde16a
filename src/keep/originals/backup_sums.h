#pragma once

#include "core/files.h"
#include "formats/disc_note.h"
#include "session/folders.h"

/// What the backup's files held when it was made, so that a damaged one can be told from an
/// original that somebody changed. Nothing needs it: of a backup without such a note nothing is
/// claimed.
namespace kestrova
{

/// What is noted of the present backup, by name; nothing where that is another folder by now.
Result<std::vector<NotedFile>> NotedBackupFiles(const Folders& folders);
/// Notes these files, and none else. Not flushed: a note that a power cut takes away is made again.
Status NoteBackupFiles(const Folders& folders, std::vector<NotedFile> files);
/// All that a folder holds, read on all cores; what cannot be read is left out.
Result<std::vector<NotedFile>> HashedFilesIn(const Path& folder);
/// Before this program itself changes these files of the backup: nothing is known of them from now
/// on.
Status ForgetBackupFiles(const Folders& folders, const std::vector<Path>& relatives);

} // namespace kestrova
