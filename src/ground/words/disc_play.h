#pragma once

#include "words/message.h"

// clang-format off

/// Playing and installing from discs.
namespace kestrova::Msg
{

inline constexpr Message InsertDisc{"Please, insert CD # "};
inline constexpr Message InsertCdDetails{"The files of the level \"~1\" of the archive ~2 lie on it. Its label is \"~3\"."};
inline constexpr Message NoDriveSelected{"No drive unit selected"};
inline constexpr Message DriveNotPresent{"Error: drive [~1] is not present"};
inline constexpr Message DriveNotReady{"Drive [~1] not ready"};
inline constexpr Message MainFolderNotOnDisc{"Main folder ~1 not found"};
inline constexpr Message NoCdReader{"Error: no cd reader available in this pc"};
inline constexpr Message ImageInstead{"Where an image of the disc lies on this computer, it can be chosen now."};
inline constexpr Message ChooseDiscImage{"Choose an image of disc # ~1"};
inline constexpr Message DiscImageFilter{"Images of discs (*.iso)|*.iso"};
inline constexpr Message DiscImageNotOpened{"The image ~1 cannot be opened. Nothing has been changed."};
inline constexpr Message OtherDiscThere{"Disc # ~1 of this archive lies there."};
inline constexpr Message OtherArchiveThere{"Disc # ~1 of another archive, \"~2\", lies there."};
inline constexpr Message FoundInPlace{"~1: ~2"};
inline constexpr Message NoArchiveThere{"No disc of an archive lies there."};
inline constexpr Message DiscIsDamaged{"A disc # ~1 lies there, but its files of this level are not those that were put on it (~2). It is damaged, or of another archive of that name, and is not used."};
inline constexpr Message DiscNotRead{"~1 cannot be read. ~2"};
inline constexpr Message DiscHoldsLink{"~1 is a link, and no link on a disc is followed, since it could lead to anything on this computer."};
inline constexpr Message DiscNotWhole{"It is damaged, or not all of it is there."};
inline constexpr Message ProvingDisc{"Comparing the files on disc # ~1 with what was put on it"};
inline constexpr Message DiscWanted{"The files of the level \"~1\" lie on the disc with the label \"~2\", in its folder ~3. Put that disc into a drive, or name its image with \"kestrovactl discs image FILE\", and try again."};
inline constexpr Message ImageOfNoDisc{"~1 is no image of a disc of this archive. Nothing has been changed."};
inline constexpr Message SetupNeedsWords{"This archive lies on a disc. \"kestrovactl discs install FILE.kva FOLDER\" brings it to the hard disk; with --full the files of its levels come too."};

} // namespace kestrova::Msg
