#pragma once

#include "formats/archive_file.h"
#include "formats/library_note.h"
#include "session/folders.h"

namespace kestrova
{

/// Where the picture that stands for a level may lie: a value, so that a worker can look there.
struct CoverPlaces {
    Path screenshots;
    Path files;         ///< of the level, as far as they lie on the hard disk
    std::string chosen; ///< file name of a screen-shot; empty: the first one

    friend bool operator==(const CoverPlaces&, const CoverPlaces&) = default;
};
CoverPlaces CoverPlacesOf(const Folders& folders, LevelCode code, const LevelNote& note);

/// The chosen screen-shot, otherwise the first one, otherwise the level's load picture; empty when
/// it has none, and while that cannot be told. It looks at the disk, which may take a while.
Path FindCover(const CoverPlaces& places);

} // namespace kestrova
