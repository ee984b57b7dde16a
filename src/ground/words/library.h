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

} // namespace kestrova::Msg
