#pragma once

#include "session/session.h"

/// What happens around the archive file: new, load, save as, the check of its folders.
namespace kestrova
{

/// Loads an archive; asks for unsaved changes first. A file that is damaged, or none, is refused
/// with words and leaves the loaded archive as it is. When only its folders were refused, memory
/// holds the new file and `loadFailedAskAnother` is set.
bool ReadArchive(Session& session, const Path& file);
/// Only fills the session from the file: no question, no check of folders, nothing written. For
/// commands that only read.
Status ReadArchiveRecords(Session& session, const Path& file);
/// With a chooser. Cancelling answers False for a load, True for a save.
bool AskLoadArchive(Session& session);
bool AskSaveArchiveAs(Session& session);
/// A new archive with the original configuration alone; asks for its folder. `folder` and `file`
/// replace chooser and default name when they are not empty. When it ends early, memory may hold
/// the new archive while the file of the old one is untouched.
bool CreateArchive(Session& session, const Path& folder = {}, const Path& file = {});
/// Asks for the main or the secondary folder when they are gone.
bool CheckArchiveFolders(Session& session);
/// `LevelArchive.kva`, `LevelArchive2.kva` … of the program's folder: the first that is free; empty
/// when 100 are taken.
Path DefaultArchivePath(const Session& session);
/// `LevelFolder`, `LevelFolder2` … below `parent`.
Path DefaultArchiveFolder(const Path& parent);

} // namespace kestrova
