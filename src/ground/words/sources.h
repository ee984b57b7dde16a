#pragma once

#include "words/message.h"

// clang-format off

/// What comes from files, folders and packages into a level.
namespace kestrova::Msg
{

inline constexpr Message SelectSourceFile{"Select source file (zip or other)"};
inline constexpr Message SelectSourceFiles{"Select packages, each of them a level"};
inline constexpr Message SourcePackagesFilter{"Packages|~1|"};
inline constexpr Message SourceFilesFilter{"Zip files (*.zip)|*.zip|All files (*.*)|*.*"};
inline constexpr Message ZipFilesFilter{"Zip files|*.zip"};
inline constexpr Message ZipSaveFilter{"Zip files (*.zip)|*.zip"};
inline constexpr Message SelectAudioFile{"Select a ~1 file to convert"};
inline constexpr Message AudioFilesFilter{"Audio files (*~1)|*~2"};
inline constexpr Message SelectSourceFolder{"Select source folder"};
inline constexpr Message UnzippingFiles{"Unzipping files in progress, wait a moment please ..."};
inline constexpr Message CopyFileInProgress{"Copy file in progress..."};
inline constexpr Message ErrorCopyingOrUnzipping{"Error while copying or unzipping file: "};
inline constexpr Message AskSubfolders{"In folder ~1 there are also sub folders.~2Would you like copy files also from all subfolders?"};
inline constexpr Message ErrorCopyingFileIn{"Error in copying file [~1] in folder ["};
inline constexpr Message SourceNoFile{"This is neither a file nor a folder, so nothing can be taken from it: ~1"};
inline constexpr Message ErrorDecompressingPackage{"Error decompressing file: "};
inline constexpr Message PackageStillAtSource{"Nothing of it was taken. It is still in the package that you gave, which is untouched: unpack it there by hand, and add what is in it."};
inline constexpr Message PackageStays{"It stays in the level as it is."};
inline constexpr Message InnerPackagesStay{"These packages lie more than ~1 deep in other packages, so they were not unpacked and stay in the level as they are: ~2. If the level needs what is in them, unpack them by hand, and add that."};
inline constexpr Message SameNameLeftOut{"These files have the name of another file of the level, so they were left out: ~1. If the level needs one of them, give it a name of its own and add it again."};
inline constexpr Message KeptUnderFreeName{"Another file of the level has the name of one of these, so they are kept under names of their own: ~1."};
inline constexpr Message SourcesChanged{"These files were written to while they were taken in, so the level has perhaps only a part of them: ~1. Is a download still running? Wait for its end, and add them again."};
inline constexpr Message NoFilesLeftOut{"These are no files but links or devices, which no level needs, so they were left out: ~1. If a link stands for a file that the level needs, add that file."};
inline constexpr Message LedOutLeftOut{"The names of these files lead out of the folder that the package is unpacked into, so they were left out, and nothing was written there: ~1. If the level needs one of them, unpack the package by hand, and add that file."};
inline constexpr Message TwiceInPackage{"The package has these names more than once. Of each the last one was taken, as every unpacking program does: ~1. If the level needs an earlier one, unpack the package by hand, and add the folder."};
inline constexpr Message PackagesGone{"The names can be read in another way only while the package is where it was: ~1. Nothing has been changed."};
inline constexpr Message PackagePartsLost{"These files did not come whole out of the package '~1', so they were left out: ~2. The rest of it was taken. If the level needs them, download the package again."};
inline constexpr Message StoredFormNoRoom{"There is no room to expand the file '~1' of '~2'. Nothing of it was taken, and everything else is untouched. Make room on the disk, and try again."};
inline constexpr Message StoredFormDamaged{"The file '~1' of '~2' is in the form in which an archive keeps files, and it is damaged. Nothing of it was taken, and everything else is untouched."};

} // namespace kestrova::Msg
