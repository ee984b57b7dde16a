#pragma once

#include "words/message.h"

// clang-format off

/// What the lists of levels show.
namespace kestrova::Msg
{

inline constexpr Message FolderNotThereNow{"The level's folder is not there now: ~1"};
inline constexpr Message TitleLevels{"Kestrova: ~1 levels)"};
inline constexpr Message TitleCountOpens{" ("};
inline constexpr Message CurrentLevelMark{" (*)"};
inline constexpr Message InfoPathAndShots{"Path: ~1Screenshots: ~2 - Savegames: "};
inline constexpr Message InfoCdNumber{" - CD# "};
inline constexpr Message InfoPathEnds{"  -  "};
inline constexpr Message InfoArchivedSavegames{" + "};
inline constexpr Message NotesNotWritten{"The notes on the levels could not be written, and stand as they were: ~1"};
inline constexpr Message NotesSetAside{"The file with the notes on the levels was damaged, so a new one was begun. The damaged one was kept: ~1"};
inline constexpr Message TagTooLong{"A tag has at most ~1 bytes. Nothing has been changed."};
inline constexpr Message OwnNoteTooLong{"A note has at most ~1 bytes. Nothing has been changed."};
inline constexpr Message TooManyTags{"A level has at most ~1 tags, so tags of a level that would have more stay as they were."};
inline constexpr Message CoverNotThere{"There is no picture ~1 among the screen-shots of level ~2. Nothing has been changed."};
inline constexpr Message AddedNotNoted{"When this level came could not be noted beside the levels; the level itself is not touched by that: ~1"};

} // namespace kestrova::Msg
