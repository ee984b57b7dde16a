#pragma once

#include "words/message.h"

// clang-format off

/// How downloads become levels.
namespace kestrova::Msg
{

inline constexpr Message EditNotBegun{"The level's files could not be kept for the case that you give the change up, so nothing was changed. Make room on the disk and try again."};
inline constexpr Message EditNotPutBack{"The change was given up, but not all of the level's files could be put back as they were. The archive's list is as before, and the files as they were are kept: the next start, or kestrovactl mend, tries it again."};
inline constexpr Message FileCopyLabel{"File copy in progress..."};
inline constexpr Message SourceFolderNotRead{"The folder ~1 could not be read. Nothing of it was copied, and it is untouched."};
inline constexpr Message SourceUnreadable{"This file or folder cannot be read now."};
inline constexpr Message SourceMissing{"This file or folder is not there: ~1"};
inline constexpr Message CdMissingForFiles{"Cd missing. Main files will not be showed"};
inline constexpr Message LevelSizeLine{"Level size: "};
inline constexpr Message FileNotOpened{"The desktop has no program that opens ~1, or it could not start it."};
inline constexpr Message RemovingTempDirectory{"Removing files from temp directory..."};
inline constexpr Message ExeLevel{"This level comes as a program, ~1, and its files are still inside that. Kestrova runs it when you say where it puts them: --installer trle for the Level Editor's folder, --installer DIR for another one."};
inline constexpr Message ExeOfZip{"It is a zip that unpacks itself: give it the ending .zip instead of .exe, and add that."};
inline constexpr Message ExeOfArchive{"It is an archive that unpacks itself: unpack it with a packing program, such as 7z or unrar, and add the folder with what comes out."};
inline constexpr Message ExeOfInstaller{"If a packing program, such as 7z, can open it, unpack it and add the folder with what comes out. Otherwise run it under Wine, let it install into an empty folder, and add that folder."};
inline constexpr Message LevelNeedsName{"You must set a name for new level"};
inline constexpr Message MissingTr4{"Missing tr4 files"};
inline constexpr Message AddingLevel{"Copying and compressing files in progress..."};
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

} // namespace kestrova::Msg
