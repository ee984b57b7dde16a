#pragma once

#include "archive/archive_parts.h"

namespace kestrova
{

/// Moves the folders of all levels, and what belongs to them, to another folder: copied (within a
/// file system: under second names), compared,
/// flushed, then the list, then the old folders go. One whole archive stands at any moment, and a
/// move that is killed is ended at the next start. `target`: where to; empty: the person is asked.
/// Of an archive that lies on discs too the person is asked whether all of it comes to the hard
/// disk. False, with words, when the archive is where it was; a Stop is not told.
bool MoveArchive(Session& session, const Path& target = {});

/// True when the loaded archive is saved and nothing waits that names its folder; otherwise False,
/// with words.
bool MayMoveArchive(const ArchiveParts& parts);

} // namespace kestrova
