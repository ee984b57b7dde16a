#pragma once

#include "words/message.h"

// clang-format off

/// The windows that ask for a disc, and how an archive on discs is installed.
namespace kestrova::Msg
{

inline constexpr Message InsertCdTitle{"Insert CD"};
inline constexpr Message InsertCdDrive{"Drive:"};
inline constexpr Message InsertCdImage{"Choose an image..."};
inline constexpr Message InsertCdEmpty{"~1: no disc"};
inline constexpr Message InsertCdUnnamed{"~1: a disc"};
inline constexpr Message InsertCdNamed{"~1: ~2"};
inline constexpr Message SetupCdTitle{"Install archive from disc"};
inline constexpr Message SetupCdCompact{"Compact"};
inline constexpr Message SetupCdCompactWords{"The files of the levels stay on the discs. A disc is asked for when a level on it is played."};
inline constexpr Message SetupCdFull{"Full"};
inline constexpr Message SetupCdFullWords{"The files of the levels come to the hard disk too. No disc is needed later."};
inline constexpr Message SetupCdInstall{"Install..."};

} // namespace kestrova::Msg
