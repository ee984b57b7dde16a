#pragma once

#include "formats/library_note.h"
#include "session/archive.h"
#include "session/folders.h"

#include <functional>

/// What the lists of levels know of each one.
namespace kestrova
{

struct LibraryLevel {
    std::string text; ///< its name, with " (*)" behind that of the current one
    std::string author;
    std::string note;
    LevelCode code = originalCode;
    std::int32_t cdNumber = 0; ///< 0: on the hard disk
    std::int64_t size = 0;     ///< bytes of its files, its savegames and its pictures
    int savegames = -1;        ///< live and archived ones; -1: not counted yet
    bool current = false;      ///< it stands in the Level Editor's folder
    LevelNote own;             ///< what the library notes of it
};
/// Its name alone.
std::string_view NameOf(const LibraryLevel& level);

/// What the library notes of a level.
using NoteOfLevel = std::function<LevelNote(LevelCode)>;

/// All levels of the archive, in its order, from memory alone but for the look at which one stands
/// in the Level Editor's folder.
std::vector<LibraryLevel> LibraryLevels(const Folders& folders, const Archive& archive,
                                        const NoteOfLevel& noteOf);

} // namespace kestrova
