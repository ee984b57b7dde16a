#pragma once

#include "formats/archive_file.h"
#include "formats/library_note.h"
#include "session/archive.h"
#include "session/folders.h"

/// What happened to a level, as far as it was noted: when it came and was played, what was done to
/// it that can be undone, and the logs of swaps that its files took part in.
namespace kestrova
{

struct LevelEvent {
    std::int64_t whenNs = 0; ///< since 1970, UTC
    std::string words;
    Path log; ///< whose lines tell more; empty: none does
};
/// The newest first. Of the logs the latest few megabytes are looked through; what cannot be read
/// is passed over.
std::vector<LevelEvent> EventsOf(const Folders& folders, const Archive& archive, LevelCode code,
                                 const LevelNote& note);

struct LogLines {
    std::vector<std::string> lines;
    std::size_t leftOut = 0; ///< how many more it has
};
/// The lines of a log that tell of the level's files, none longer than a few hundred letters.
Result<LogLines> LinesOfLog(const Folders& folders, LevelCode code, const Path& log);

} // namespace kestrova
