#pragma once

#include "words/message.h"

// clang-format off

/// How downloads become levels.
namespace kestrova::Msg
{

inline constexpr Message EditNotBegun{"The level's files could not be kept for the case that you give the change up, so nothing was changed. Make room on the disk and try again."};
inline constexpr Message EditNotPutBack{"The change was given up, but not all of the level's files could be put back as they were. The archive's list is as before, and the files as they were are kept: the next start, or kestrovactl mend, tries it again."};
inline constexpr Message SelectSourceFile{"Select source file (zip or other)"};
inline constexpr Message SourceFilesFilter{"Zip files (*.zip)|*.zip|All files (*.*)|*.*"};
inline constexpr Message SelectAudioFile{"Select a ~1 file to convert"};
inline constexpr Message AudioFilesFilter{"Audio files (*~1)|*~2"};
inline constexpr Message SelectSourceFolder{"Select source folder"};
inline constexpr Message UnzippingFiles{"Unzipping files in progress, wait a moment please ..."};
inline constexpr Message FileCopyLabel{"File copy in progress..."};
inline constexpr Message CopyFileInProgress{"Copy file in progress..."};
inline constexpr Message ErrorCopyingOrUnzipping{"Error while copying or unzipping file: "};
inline constexpr Message AskSubfolders{"In folder ~1 there are also sub folders.~2Would you like copy files also from all subfolders?"};
inline constexpr Message ErrorCopyingFileIn{"Error in copying file [~1] in folder ["};
inline constexpr Message SourceFolderNotRead{"The folder ~1 could not be read. Nothing of it was copied, and it is untouched."};
inline constexpr Message SourceMissing{"This file or folder is not there: ~1"};
inline constexpr Message SourceNoFile{"This is neither a file nor a folder, so nothing can be taken from it: ~1"};
inline constexpr Message CdMissingForFiles{"Cd missing. Main files will not be showed"};
inline constexpr Message CountOfFiles{" files ("};
inline constexpr Message ClosingRound{")"};
inline constexpr Message LevelSizeLine{"Level size: "};
inline constexpr Message ErrorDecompressingPackage{"Error decompressing file: "};
inline constexpr Message PackageStillAtSource{"Nothing of it was taken. It is still in the package that you gave, which is untouched: unpack it there by hand, and add what is in it."};
inline constexpr Message PackageStays{"It stays in the level as it is."};
inline constexpr Message InnerPackagesStay{"These packages lie more than ~1 deep in other packages, so they were not unpacked and stay in the level as they are: ~2. If the level needs what is in them, unpack them by hand, and add that."};
inline constexpr Message NoFileSelected{"No file selected"};
inline constexpr Message AskRemoveFile{"Are you sure to remove file: "};
inline constexpr Message FileNotOpened{"The desktop has no program that opens ~1, or it could not start it."};
inline constexpr Message RemovingTempDirectory{"Removing files from temp directory..."};
inline constexpr Message AskedWads{"wad packages"};
inline constexpr Message AskedWaves{"audio files of a game CD"};
inline constexpr Message AskedExe{"an exe installer"};
inline constexpr Message ConfigAsksElsewhere{"The configuration file of this level asks for files from elsewhere, which this version does not fetch by itself: ~1. Its texts were taken. The level can be added, but it may lack those files; its readme tells where they come from."};
inline constexpr Message ExeLevel{"This level comes as a program, ~1, and its files are still inside that. Kestrova does not run such programs."};
inline constexpr Message ExeOfZip{"It is a zip that unpacks itself: give it the ending .zip instead of .exe, and add that."};
inline constexpr Message ExeOfArchive{"It is an archive that unpacks itself: unpack it with a packing program, such as 7z or unrar, and add the folder with what comes out."};
inline constexpr Message ExeOfInstaller{"If a packing program, such as 7z, can open it, unpack it and add the folder with what comes out. Otherwise run it under Wine, let it install into an empty folder, and add that folder."};
inline constexpr Message LevelNeedsName{"You must set a name for new level"};
inline constexpr Message MissingTr4{"Missing tr4 files"};
inline constexpr Message AddingLevel{"Copying and compressing files in progress..."};
inline constexpr Message SameNameLeftOut{"These files have the name of another file of the level, so they were left out: ~1. If the level needs one of them, give it a name of its own and add the level again."};
inline constexpr Message KeptUnderFreeName{"Another file of the level has the name of one of these, so they are kept under names of their own: ~1."};
inline constexpr Message SourcesChanged{"These files were written to while they were taken in, so the level has perhaps only a part of them: ~1. Is a download still running? Wait for its end, and add them again."};
inline constexpr Message NoFilesLeftOut{"These are no files but links or devices, which no level needs, so they were left out: ~1. If a link stands for a file that the level needs, add that file."};
inline constexpr Message LedOutLeftOut{"The names of these files lead out of the folder that the package is unpacked into, so they were left out, and nothing was written there: ~1. If the level needs one of them, unpack the package by hand, and add that file."};
inline constexpr Message TwiceInPackage{"The package has these names more than once. Of each the last one was taken, as every unpacking program does: ~1. If the level needs an earlier one, unpack the package by hand, and add the folder."};
inline constexpr Message PackagesGone{"The names can be read in another way only while the package is where it was: ~1. Nothing has been changed."};
inline constexpr Message VerifyingEqual{"Verify if tr4 files are equal of other archived levels "};
inline constexpr Message AskAddEqual{"Warning: current tr4 file ~1 has same name and same size of tr4 file in level ~2However, would you like add this (not too) new level?"};
inline constexpr Message ReasonReplaced{"replaced by one that came with a package"};
inline constexpr Message ReasonRefused{"came with a package and was not wanted"};
inline constexpr Message IncomingNotKept{"A savegame of this level would be lost, and it could not be kept in a safe place. Nothing was replaced. Make room on the disk and try again."};
inline constexpr Message IncomingNotCopied{"The savegames and pictures that came with the level could not be copied to their places. What was there before is untouched. Make room on the disk, or give yourself the right to write there, and try again."};
inline constexpr Message ChooseLanguageTitle{"Choose language for current level"};
inline constexpr Message AskLanguageFile{"This level contains ~1 language files (.dat). Please choose only one. (Write number you wish: 1-"};
inline constexpr Message LanguageFilesNobody{"Nobody can be asked here, so the level was not added. Remove the language files that you do not want from the package, or add the level where a question can be answered.~1"};
inline constexpr Message LanguageFileFailed{"The language file ~1 could not be put in order. The level is not added yet. Make room on the disk, or give yourself the right to write there, and try again."};
inline constexpr Message AskLeftIntake{"The program ended while a level was being added. What had come in lies in the folder ~1, which no level of the archive uses. The package that it came from is untouched.~2Do you want to remove that folder?"};
inline constexpr Message LevelFolderGone{"The folder of this level is not there: ~1. Nothing has been changed. Put the folder back, or delete the level from the list."};
inline constexpr Message PackagePartsLost{"These files did not come whole out of the package '~1', so they were left out: ~2. The rest of it was taken. If the level needs them, download the package again."};
inline constexpr Message StoredFormNoRoom{"There is no room to expand the file '~1' of '~2'. Nothing of it was taken, and everything else is untouched. Make room on the disk, and try again."};
inline constexpr Message StoredFormDamaged{"The file '~1' of '~2' is in the form in which an archive keeps files, and it is damaged. Nothing of it was taken, and everything else is untouched."};

} // namespace kestrova::Msg
