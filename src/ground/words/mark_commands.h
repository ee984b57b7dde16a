#pragma once

#include "words/message.h"

// clang-format off

/// The command that notes what a person says of levels, and what is shown of it.
namespace kestrova::Msg
{

inline constexpr Message UseMark{"mark CODE… [--status new|playing|finished|given-up] [--stars N] [--tag T] [--untag T] [--note TEXT] [--cover SHOT]"};
inline constexpr Message SumMark{"Notes of levels how far you are with them, how many stars you give (1 to 5; 0: none), tags, a note of your own (\"\" removes it) and which screen-shot is shown as the cover (\"\": the first one). --tag and --untag may stand several times. What is not said stays; the answer tells what stood before. The notes lie in library.json beside the levels, and a level that is removed and brought back has its own again."};
inline constexpr Message KeysMark{"an array of objects with `code`, `name` and, in `before` and `now`, `status`, `stars`, `tags`, `ownNote`, `cover`."};
inline constexpr Message WrongMarkNothing{"There is nothing to note: say --status, --stars, --tag, --untag, --note or --cover."};
inline constexpr Message WrongStatus{"'~1' is no status. There are: new, playing, finished, given-up."};
inline constexpr Message WrongStars{"'~1' is no number of stars from 0 to 5."};
inline constexpr Message WrongTagEmpty{"A tag cannot be empty."};
inline constexpr Message MarkLine{"  ~1: ~2 (before: ~3)"};
inline constexpr Message MarkSame{"  nothing changed"};
inline constexpr Message MarkNone{"none"};
inline constexpr Message NotedStatus{"Status"};
inline constexpr Message NotedStars{"Stars"};
inline constexpr Message NotedTags{"Tags"};
inline constexpr Message NotedNote{"Your note"};
inline constexpr Message NotedCover{"Cover"};
inline constexpr Message NotedLine{"~1: ~2"};
inline constexpr Message NotedNoteHead{"Your note: "};
inline constexpr Message NotedAdded{"Added: ~1"};
inline constexpr Message NotedPlayed{"Last played: ~1"};
inline constexpr Message NotedTime{"Played for: ~1 h ~2 min"};
inline constexpr Message OnDiscMark{" (on disc)"};
inline constexpr Message NotesUnreadable{"The notes on the levels cannot be read, so none are shown: "};

} // namespace kestrova::Msg
