#pragma once

#include "words/message.h"

// clang-format off

/// Levels leaving the archive, export, language, documents.
namespace kestrova::Msg
{

inline constexpr Message ExportCopying{"Copying level files in progress"};
inline constexpr Message ExportErrorDecompressing{"Error decompressing level files"};
inline constexpr Message ExportErrorCopying{"The level's files could not be gathered for the zip, so nothing was exported. The level is untouched. Make room on the disk of the program's folder, and try again."};
inline constexpr Message AskExportScreenshots{"There are some screenshots for current level. Do you want export also screenshots?"};
inline constexpr Message ExportCopyingShots{"Copy screenshots in progress..."};
inline constexpr Message ExportSaveTitle{"Save exported level files"};
inline constexpr Message ExportZipping{"Zipping file in "};
inline constexpr Message ExportErrorZipping{"Error zipping files:"};
inline constexpr Message ExportClearing{"Removing files from temp dir"};
inline constexpr Message ExportDone{"All files of current level saved in "};
inline constexpr Message ExportRenamed{"These files of yours have another name in the zip, since a file of the level has theirs, or since the game would take them for its loading picture: ~1."};
inline constexpr Message ExportStopped{"The export was stopped. No zip was made; one that was there before is as it was, and so is the level."};
inline constexpr Message NoLevelSelected{"No levels is selected"};
inline constexpr Message RenamedPair{"~1 as ~2"};
inline constexpr Message LeftIntakeCleared{"The program ended while a level was being added. What had come in was not a whole level, and has been cleared away. The package that it came from is untouched; add it again."};
inline constexpr Message WholeIntakeListed{"The program ended when the level ~1 had just come in whole, before the list had it. It is on the list now."};
inline constexpr Message LeftIntakeStays{"The program ended while a level was being added, and what had come in could not be cleared away from the folder ~1. It is no whole level."};
inline constexpr Message UnknownCodeInList{"Internal error: unknown level code: "};
inline constexpr Message NoMoreInfoFile{"Sorry, there is not any doc file~1If you wish link a doc file at [More info] button, select menu [Level->Properties current level] and add a doc/txt/html files and then link it as [More info] button"};
inline constexpr Message MoreInfoNotFound{"Error, file '~1' not found"};
inline constexpr Message MoreInfoCopyFailed{"Error copying file from [~1] to ["};
inline constexpr Message MoreInfoCopyEnds{"]"};
inline constexpr Message MoreInfoNotOpened{"The file could not be opened. Is there a program on this desktop that shows such files?"};
inline constexpr Message ErrorLevel0{"Error creating level 0000 (Trle original configuration"};
inline constexpr Message Level0Failed{"The folder of the original configuration could not be made: ~1. Nothing was left behind. Make room on the disk, or give yourself the right to write there, and start again."};
inline constexpr Message CannotCreateLevelFolders{"Error I cannot create new folders in ["};
inline constexpr Message ClosingBracket{"]"};
inline constexpr Message RemovingNewLevelFolder{"Removing level folder in progress"};
inline constexpr Message ErrorInRemovingFolder{"Error in removing folder: "};
inline constexpr Message CannotSetAside{"The new level's folder ~1 is there already, with files in it that the list of levels does not know, and it could not be set aside. No level was added, and nothing in it was touched."};
inline constexpr Message FolderSetAside{"The archive's folder held a folder ~1 that its list of levels does not know. Nothing in it was changed: it was set aside and is called ~2 now. If it held a level that you miss, its files, savegames and screen-shots are there."};
inline constexpr Message RemoveOriginalLevel{"You can not delete TRLE original level!~1This level is necessary for backup\\restore functions"};
inline constexpr Message AskRemoveLevel{"Are you sure to want remove level "};
inline constexpr Message AskRemoveLevelEnd{" ?"};
inline constexpr Message AskRemoveFolders{"Do you want remove all sub-folders of level?~1(Folder to remove: "};
inline constexpr Message RemovingLevelFolder{"Removing level folder, wait please"};
inline constexpr Message ErrorWhileRemovingFolder{"Error while removing folder: "};
inline constexpr Message LevelRemoved{"Level has been removed"};
inline constexpr Message RemoveFolderAway{"The folder of the level, ~1, cannot be looked into now: it may be a link to a place that is not there. Nothing was changed. Connect its drive and remove the level then, or take it off the list with its files left where they are: kestrovactl remove ~2 --keep-files"};
inline constexpr Message LevelStillInstalled{"The level could not be taken out of the Level Editor's folder, so it was not removed from the archive."};
inline constexpr Message AskRemoveForGood{"The folder ~1 is larger than what is kept so that changes can be undone (~2 megabytes), so its files could not come back; the savegames and pictures of the level stay in the history. Delete the folder for good?"};
inline constexpr Message RemovedStateNotKept{"The level is out of the archive, but its folder was left: its savegames could not be kept in a safe place. Make room on the disk; after that you can delete the folder ~1 by hand."};
inline constexpr Message RemovalHasNoWayBack{"The removal of this level cannot be undone, since it could not be noted."};
inline constexpr Message RemovedFolderStays{"The level is out of the archive, but its folder was left as it is, since it could not be set aside: ~1. To have the level back, undo the removal."};
inline constexpr Message LanguageEditorIsEnglish{"Your Tomb Raider Level Editor is the english version. Set english is not necessary"};
inline constexpr Message LanguageNotInBackup{"I cann't find your language.dat in current trle backup"};
inline constexpr Message LanguageAlreadyYours{"Current level is already in your language"};
inline constexpr Message LanguageAlreadySet{"In current level you have already set your language"};
inline constexpr Message LanguageErrorRenamingAs{"Error renaming file '~1' as '~2.bak"};
inline constexpr Message LanguageErrorCopying{"Error copying file from '~1' to '"};
inline constexpr Message LanguageNothingToRestore{"Tomb Raider Level Editor version is english you have not to set or restore language in custom levels"};
inline constexpr Message LanguageNoBackupOfDat{"Current level is not in your language: missing backup of .dat file"};
inline constexpr Message LanguageErrorRenamingTo{"Error renaming file from '~1' to '"};
inline constexpr Message LanguageWarnEnglish{"Warning: you have english version of Tomb Raider Level Editor.~1It's not necessary change or restore language in this case, because english is default language for custom levels"};
inline constexpr Message LanguageNotForOriginal{"You can not change language for trle original configuration"};
inline constexpr Message LanguageSet{"Current level now is in your language. If when you play it, you see there are troubles you'll can restore original language whereby menu command: [Level->Restore original language in current level]"};
inline constexpr Message LanguageRestored{"Current level restored with original language"};
inline constexpr Message LanguageError{"Error: "};
inline constexpr Message LanguageNoneSelectedRestore{"No selected levels"};
inline constexpr Message LanguageConverting{"Language conversion in progress.."};
inline constexpr Message LanguageAllSet{"Converted ~1 levels in your language~2It has not been possible to set your language in ~3 levels"};
inline constexpr Message LanguageAllRestored{"Restored ~1 levels with original language"};
inline constexpr Message LanguageNotInstalled{"The language of this level is changed in the archive, but its file ~1 could not be changed in the Level Editor's folder. Set the original configuration and press Play again to have it there too."};
inline constexpr Message ReasonRemoved{"level removed"};

} // namespace kestrova::Msg
