#pragma once

#include "words/message.h"

// clang-format off

/// What was kept.
namespace kestrova::Msg
{

inline constexpr Message HistoryUnknownId{"The history of this level has no file ~1."};
inline constexpr Message HistoryNoFreeSlot{"All fifteen slots of the game are taken. Free a slot first; nothing was changed."};
inline constexpr Message HistoryContentGone{"The kept content of this file is damaged or missing."};
inline constexpr Message HistoryHasNone{"The history has nothing of the name ~1. kestrovactl history shows what it has."};
inline constexpr Message HistoryNotDeleted{"Nothing was deleted; the history has all that it had."};
inline constexpr Message HistoryNotAllDeleted{"Not everything could be deleted. kestrovactl history shows what is still there."};
inline constexpr Message HistoryContentStays{"The history does not list these files any more, but what was in them still lies in history/content of the program's folder: the history of the level ~1 cannot be read whole, and it may need them."};
inline constexpr Message AskDeleteHistory{"Delete what the history keeps here for good: ~1? Files: ~2, with ~3. This cannot be undone; what only the history has is gone then."};
inline constexpr Message HistoryDeleted{"Deleted from the history: ~1"};
inline constexpr Message MarkerUnreadable{"The file ~1, which tells what the last level brought, cannot be read. Nothing was changed. Give yourself the right to read it, or use [Tools->Set original configuration in TRLE] and choose FULL restore."};

} // namespace kestrova::Msg
