#pragma once

#include "archive/archive_parts.h"
#include "archive/library_notes.h"

/// What a person says of levels: how far they are with it, stars, tags, a note, a cover.
namespace kestrova
{

/// What is to change; what has no value stays.
struct LevelMarks {
    std::optional<LevelStatus> status;
    std::optional<int> stars;                     ///< 0 takes them away
    std::optional<std::vector<std::string>> tags; ///< all of them; first, before the next two
    std::vector<std::string> addTags;
    std::vector<std::string> dropTags;
    std::optional<std::string> ownNote;
    bool goesOn = false; ///< the note is typed on: one entry undoes what was typed before, too
    std::optional<std::string> cover; ///< name in the level's screen-shots; empty: the first one
};

/// Marks levels of the archive, all of them with one write and one entry that undoes it, and
/// refreshes the list. The answer says
/// what stood before and what stands now. No value when nothing was done, with words: an unknown
/// code, a picture that one of the levels does not have, a text beyond its bounds, a failure. The
/// lock of the archive's folder is held, as in windows and in commands that change stores.
std::optional<std::vector<ChangedNote>>
MarkLevels(const ArchiveParts& parts, const std::vector<LevelCode>& codes, const LevelMarks& marks);

} // namespace kestrova
