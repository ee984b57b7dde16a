#pragma once

#include "words/message.h"

// clang-format off

/// What was kept.
namespace kestrova::Msg
{

inline constexpr Message HistoryUnknownId{"The history of this level has no file ~1."};
inline constexpr Message HistoryNoFreeSlot{"All fifteen slots of the game are taken. Free a slot first; nothing was changed."};
inline constexpr Message HistoryContentGone{"The kept content of this file is damaged or missing."};
inline constexpr Message MarkerUnreadable{"The file ~1, which tells what the last level brought, cannot be read. Nothing was changed. Give yourself the right to read it, or use [Tools->Set original configuration in TRLE] and choose FULL restore."};

} // namespace kestrova::Msg
