#pragma once

#include "core/files.h"
#include "formats/change_note.h"
#include "session/archive.h"
#include "session/folders.h"

/// Whether a change can be undone: the level must be the very one, and all as the change left it.
namespace kestrova
{

/// Where the level is that a change was made in. Its folder's token tells.
enum class LevelIs {
    Here,     ///< in the loaded archive, or set aside by that very change
    Gone,     ///< it was in this archive, and left its list or lost its folder
    Replaced, ///< another level has its place
    Elsewhere ///< in another archive
};
LevelIs WhereIsLevel(const Folders& folders, const Archive& archive, const ChangeHead& entry);
/// The removal of a level whose number another one has got since leads back under the next number
/// that is free, `code` and all that follows from it; any other entry as it is.
Change UnderFreeNumber(const Folders& folders, const Archive& archive, const Change& entry);
/// Whether all is as the change left it, so that it can be undone. A failure says in words what is
/// not, and what to do.
Status MayUndo(const Folders& folders, const Archive& archive, const Change& entry,
               const Heartbeat& beat = {});

} // namespace kestrova
