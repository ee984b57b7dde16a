#pragma once

#include "words/message.h"

// clang-format off

/// What the terminal says of making and verifying the discs of an archive.
namespace kestrova::Msg
{

inline constexpr Message PlanningDiscs{"Looking at the levels"};
inline constexpr Message PlannedDisc{"~1: levels: ~2, ~3"};
inline constexpr Message PlannedDiscTooLarge{"~1: levels: ~2, ~3, larger than the disc"};
inline constexpr Message PlannedLevel{"  ~1  ~2"};
inline constexpr Message LevelLeftOutLine{"stays: ~1  ~2: ~3"};
inline constexpr Message PlanInAll{"Discs of ~2: ~1. Levels on them: ~3. Their images take ~4."};
inline constexpr Message DiscOptionsExclude{"~1 and ~2 exclude each other"};
inline constexpr Message DiscOptionNumber{"~1 wants a number"};
inline constexpr Message DiscOptionWith{"--with knows trle, not '~1'"};
inline constexpr Message NoLevelOnDiscs{"No level of this archive lies on a disc."};
inline constexpr Message DiscsAreGood{"Levels on discs: ~1. All of them are as they were written."};
inline constexpr Message DiscsAreBad{"Levels on discs: ~2. Not there as they were written: ~1. Keep what you have of them elsewhere."};

} // namespace kestrova::Msg
