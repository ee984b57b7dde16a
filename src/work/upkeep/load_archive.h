#pragma once

#include "archive/archive_parts.h"

/// What happens around the archive file: new, load, save as, the check of its folders.
namespace kestrova
{

/// Loads an archive and takes the lock of its folder; asks for unsaved changes first. False, with
/// words, for a file that is damaged, or none, for a folder that another program holds, and when
/// the person names no folder in place of one that is gone. Then
/// memory holds the archive that was loaded before, or none, as a whole. `levelFolder` says where
/// the levels lie now, whatever the file says; one that holds none of them is refused.
bool ReadArchive(Session& session, const Path& file, const Path& levelFolder = {});
/// What became of a load; `Held`: another program works on the archive's folder.
enum class Load { Done, NotRead, Held, FoldersRefused };
/// The same for the archive that is remembered, at a start.
Load ReadLastArchive(Session& session);
/// What the file holds: no question, no check of folders, nothing written.
Result<Archive> ReadArchiveRecords(const ProgramSettings& settings, const Path& file);
/// With a chooser. Cancelling answers False for a load, True for a save.
bool AskLoadArchive(Session& session);
/// Asks for the main or the secondary folder of an archive when they are gone. False, with words,
/// when the person names none.
bool CheckArchiveFolders(const ArchiveParts& parts, Archive& archive);

} // namespace kestrova
