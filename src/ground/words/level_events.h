#pragma once

#include "words/message.h"

// clang-format off

/// What happened to a level, on the page beside the list.
namespace kestrova::Msg
{

inline constexpr Message EventAdded{"Added to the archive"};
inline constexpr Message EventPlayed{"Played last"};
inline constexpr Message EventDone{"Done: ~1"};
inline constexpr Message EventUndone{"Undone: ~1"};
inline constexpr Message EventLog{"Files put in or taken out, as ~1 tells"};
inline constexpr Message EventsWhen{"When"};
inline constexpr Message EventsWhat{"What"};
inline constexpr Message EventsListName{"What happened to the level"};
inline constexpr Message EventsNone{"Nothing is noted of this level yet. With “~1” in the preferences each swap writes down what it did with every file."};
inline constexpr Message EventsLeftOut{"… and more lines: ~1"};
inline constexpr Message EventsLogNotRead{"The log cannot be read now: ~1"};

} // namespace kestrova::Msg
