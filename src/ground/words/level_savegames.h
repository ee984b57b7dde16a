#pragma once

#include "words/message.h"

// clang-format off

/// The savegames of a level, one by one.
namespace kestrova::Msg
{

inline constexpr Message SavegameInWords{"~1: “~2”, number ~3, saved ~4"};
inline constexpr Message SavegameIsLive{"the same savegame stands in the game's slots already"};
inline constexpr Message SavegamesNotBroughtIn{"These savegames did not come into the game's slots, and are where they were: ~1."};
inline constexpr Message SavegamesNotExported{"These savegames could not be copied: ~1. They are still in the level."};
inline constexpr Message SavegamesNotDeleted{"The savegames were not deleted. They are where they were."};
inline constexpr Message AskExportOver{"The folder ~1 holds other savegames of these names: ~2. Replace them? They are kept in the level's history."};
inline constexpr Message AskDeleteSavegames{"Delete these savegames, with their notes and pictures? ~1. They are kept in the level's history, and Undo brings them back."};
inline constexpr Message HistoryGoesByItself{"The history lets its oldest files go by itself, as the settings say. Nothing was deleted."};
inline constexpr Message ReasonSavegameDeleted{"deleted"};

} // namespace kestrova::Msg
