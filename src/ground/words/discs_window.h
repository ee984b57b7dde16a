#pragma once

#include "words/message.h"

// clang-format off

/// The window in which an archive's discs are made.
namespace kestrova::Msg
{

inline constexpr Message DiscsTitle{" Create Kestrova CD"};
inline constexpr Message DiscsLevels{"Put the levels of the archive on discs"};
inline constexpr Message DiscsTrle{"Enclose the Level Editor's folder"};
inline constexpr Message DiscsSetup{"Enclose the setup of Kestrova"};
inline constexpr Message DiscsImageFirst{"Make an image first"};
inline constexpr Message DiscsCapacity{"Size of a disc:"};
inline constexpr Message DiscsSpeed{"Speed:"};
inline constexpr Message DiscsUnit{"Unit:"};
inline constexpr Message DiscsImagesOnly{"Images only, into a folder"};
inline constexpr Message DiscsImagesFolder{"Folder of the images:"};
inline constexpr Message DiscsChooseImages{"Folder for the images of the discs"};
inline constexpr Message DiscsBrowse{"Browse"};
inline constexpr Message DiscsStart{"Start"};
inline constexpr Message DiscsStop{"Stop"};
inline constexpr Message DiscsPlanName{"Which level goes onto which disc"};
inline constexpr Message DiscsColumnName{"Disc and its levels"};
inline constexpr Message DiscsColumnLevels{"Levels"};
inline constexpr Message DiscsColumnSize{"Size"};
inline constexpr Message DiscsNoPlan{"Nothing goes onto discs: choose their size, and what they shall hold."};
inline constexpr Message DiscsTooLarge{"~1: larger than the disc"};
inline constexpr Message DiscsStays{"Stays on the hard disk"};
inline constexpr Message DiscsSpeedRow{"~1 X"};
inline constexpr Message DiscsUnitRow{"~1  ~2"};
inline constexpr Message DiscsImagesHint{"a folder that has room"};

} // namespace kestrova::Msg
