#pragma once

#include "core/names.h"
#include "formats/stored_note.h"

/// What is noted of a level's stored files, in the level's own folder, so that it goes where the
/// level goes. Nothing needs it: a level without it is as good as any other, and only nothing can
/// be compared with.
namespace kestrova
{

/// Where the note of the level with that folder lies.
Path StoredNoteOf(const Path& home);
/// No value where nothing is noted; `Damaged` for a file that is none.
Result<std::optional<StoredNote>> ReadStoredNote(const Path& home);
/// Not flushed: a note that a power cut takes away is made again.
Status WriteStoredNote(const Path& home, const StoredNote& note);
/// Files are about to change, or may have changed, by this program's own work: what is not as noted
/// then is no damage. Nothing without a note.
void DoubtStoredNote(const Path& home);

} // namespace kestrova
