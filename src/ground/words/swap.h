#pragma once

#include "words/message.h"

// clang-format off

/// The swap: installation and removal.
namespace kestrova::Msg
{

inline constexpr Message LogSetLevel{"*** SET LEVEL: ~1 : CODE="};
inline constexpr Message LogSetLevelEnd{" ***"};
inline constexpr Message CannotOverwriteMarker{"Error: I can't overwrite (or create) file: "};
inline constexpr Message ErrorDecompressingFiles{"Error decompressing files"};
inline constexpr Message CopyingFilesToPlay{"Copying files to play new custom level"};
inline constexpr Message LogNoMarker{"Missing Kestrova.txt, i.e. trle original: only remove and backup savegames"};
inline constexpr Message LevelFolderNotFound{"I cann't find level folder [~1] relative to previuos custom level installed in trle folder~2To resolve this problem use menu command [Tools->Set original configuration in TRLE] and choose FULL restore "};
inline constexpr Message LevelArchiveAway{"All of its archive's folder is away: ~1. Connect its drive first, or say where the folder is now: kestrovactl load FILE.kva --folder DIR. Nothing is lost meanwhile, and no full restore is needed then."};
inline constexpr Message LogLevelFolderNotFound{" level folder of previosu level [~1] NOT FOUND"};
inline constexpr Message LogPreviousNone{"PREVIOUS LEVEL: NONE"};
inline constexpr Message LogPreviousLevel{"PREVIOUS LEVEL: ~1 :CODE= "};
inline constexpr Message CannotDeleteBackupSavegames{"I cann't delete files in ~1\\backup_savegames folder"};
inline constexpr Message RemovingPreviousFiles{"Removing files of previous custom level"};
inline constexpr Message LogNotRemovedCompact{"File '~1' not removed because backup is not full"};
inline constexpr Message CannotDeleteFile{"I cann't delete file: "};
inline constexpr Message RestoringChangedFiles{"Restoring files changed by previous custom level"};
inline constexpr Message GameRunsAlready{"A game runs already in the Level Editor's folder: ~1.~2A second one would write its savegames into the same slots. Nothing has been changed.~3Start a second one all the same?"};
inline constexpr Message ProgramsRunInTrle{"Programs still run in the Level Editor's folder: ~1.~2Changing the level under them can spoil what they read or save. Nothing has been changed yet.~3Change the level all the same?"};
inline constexpr Message LevelLacksBytes{"(files of ~1 together, whose names are noted nowhere: ~2 are there, and the archive noted ~3)"};
inline constexpr Message ReasonSwap{"swap"};
inline constexpr Message ReasonComesIn{"replaced by a level's saved file"};
inline constexpr Message SwapBroken{"The swap could not be finished. No savegame is lost: what is not in the Level Editor's folder is in its level's folder or in the history. Start Kestrova again when the disk can be written, and it sets the original configuration."};
inline constexpr Message LevelFilesGone{"The files of this level are not where the archive keeps them. Nothing was changed in the Level Editor's folder. Look whether the archive's folder was moved, or a drive is missing."};
inline constexpr Message NoSpaceForLevel{"There is not enough free space in the Level Editor's folder for this level: it needs ~1, and ~2 are free. Nothing was changed."};
inline constexpr Message UnknownLevelCode{"The archive has no level with the code ~1. Nothing was changed."};
inline constexpr Message TrleFolderGone{"The Level Editor's folder is not there: ~1. Nothing was changed. Connect its drive, or choose the folder in the preferences."};
inline constexpr Message SomeFilesNotCopied{"The level stands in the Level Editor's folder, but these files could not be copied: ~1. Make room or give yourself the right to write there, set the original configuration, and press Play again."};
inline constexpr Message StateNotBrought{"Not every savegame of this level could be brought in: ~1. They are still in the level's own folder."};
inline constexpr Message MarkerEntriesRefused{"The file that tells what the last level brought names files outside the Level Editor's folder. These were not touched: ~1"};
inline constexpr Message MendedFiles{"The machine was started anew since this level came in. These files had not reached the disk and were copied again: ~1"};
inline constexpr Message NamesLeftOut{"These files of the level have names that the Level Editor's folder cannot take, so they stay in the archive: ~1"};
inline constexpr Message TwinsToHistory{"Of savegames, notes and shots whose names differ by case alone the newest stays; the others went to the history: ~1. kestrovactl saves history ~2 shows them, kestrovactl saves bring-back brings them back."};
inline constexpr Message MarkerSaidNothing{"The marker ~1 did not say which level stands in the Level Editor's folder, so what that level brought may still be there. The savegames are kept in the history. Run the full restore: [Tools->Set original configuration in TRLE], Full, or kestrovactl original --full"};
inline constexpr Message ReasonTwin{"a second file of the same name"};
inline constexpr Message ReasonLeft{"left behind by an earlier swap"};
inline constexpr Message CannotReadStore{"The saved games of this level cannot be read now, so nothing was changed: the level that stood in the Level Editor's folder is still there. Connect the drive of the archive, or give yourself the right to read there, and try again."};
inline constexpr Message CannotKeepFiles{"These files of the Level Editor's folder are not as Kestrova put them there, and they could not be kept in a safe place, so they stay where they are: ~1. Make room on the disk of the program's folder, and press Play again."};
inline constexpr Message BackupLeftSounds{"These files were left by levels that are not there any more, so they were not taken for originals: ~1"};

} // namespace kestrova::Msg
