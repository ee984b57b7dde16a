#pragma once

#include "archive/archive_parts.h"

namespace kestrova
{

/// What the removal needs. The archive may be one that is not in memory yet.
struct FilesLeaving {
    FilesLeaving(const ArchiveParts& parts, Archive& coming)
        : host(parts.host), machine(parts.machine), archive(coming), settings(parts.settings),
          folders(parts.folders)
    {
        folders.levels = FolderFromText(Trim(archive.header.secondaryFolder));
    }

    Host& host;
    Machine& machine;
    Archive& archive;
    ProgramSettings& settings;
    Folders folders;
};

/// What `CdMovePending` of the header waits for: the `files` folders of levels that lie on discs
/// leave the hard disk. One leaves only when the note of the discs says that its copy was compared
/// byte by byte, when it still is what the note says, and when that disc can be read now. Its
/// removal can be undone as far as the settings leave room beside what can be undone already.
/// Levels whose folder stays are told, and lie on the hard disk again. After a Stop the next load
/// goes on. False, with words, when a disc was missing and the person did not give it up, and when
/// the list could not be saved.
bool RemoveFilesFoldersFromHd(const FilesLeaving& leaving);

} // namespace kestrova
