#pragma once

#include "words/message.h"

// clang-format off

/// Back to the original configuration: backup, restore, recovery.
namespace kestrova::Msg
{

inline constexpr Message ConfirmOriginalNeed{"Kestrova needs the original Tomb Raider Level Editor files to handle swapping custom levels with intermediate restore of original file."};
inline constexpr Message ConfirmOriginalAsk{"Current installed configuration of Tomb Raider Level Editor in ~1 is original?"};
inline constexpr Message ConfirmOriginalNote{"(Note: If you played custom level after last setup you should select NO button)"};
inline constexpr Message OriginalTips{"Tips: ~1* If there are savegames of custom level you played in trle forlder, save them in new folder and then, when you add that level to archive, add also that savegames folder in 'about file' for that level"};
inline constexpr Message OriginalSetupAgain{"You must perform a new setup of Tomb Raider Level Editor overwritting current files.~1Kestrova should start with an original configuration of Tomb Raider Level Editor.~2Now press [OK] to terminate program and repeat setup of TRLE, then you could start newly Kestrova"};
inline constexpr Message BackupSizesHere{"Your own Level Editor's folder needs ~1 for a full backup and ~2 for a compact one."};
inline constexpr Message AskFullBackup{"Do you want a full backup? (About 240 MB) ~1Note: if you select NO will be done a compact backup with files of following folder of trle: main, data and graphics\\wads. (about 90 MB))~2Warning: Compact backup does not allow to handle correctly backup and restore for .wav files"};
inline constexpr Message CannotWriteInFolder{"I cannot write in folder: "};
inline constexpr Message CreationCompactBackup{"Creation compact backup"};
inline constexpr Message CreatingFolders{"Creation folder structure in progress..."};
inline constexpr Message CopyFromTrle{"Copy files from TRLE folder ..."};
inline constexpr Message CopyFromData{"Copy files from DATA folder ..."};
inline constexpr Message CopyFromGraphics{"Copy files from GRAPHICS folder ..."};
inline constexpr Message AskRemoveOldBackup{"Remove old backup files before creating new backup?"};
inline constexpr Message RemovingOldBackup{"Removing old backup files in progress..."};
inline constexpr Message AskRefreshBackup{"Current backup is already FULL~1Do you want to refresh backup_trle folder copying all files of [~2] folder"};
inline constexpr Message ErrorCreatingBackup{"Error creating full backup in : "};
inline constexpr Message RestoreRemovingLevel{"Removing files of old level from TRLE folder"};
inline constexpr Message RestoreRemovingCritical{"Removing all critical files from TRLE folder"};
inline constexpr Message RestoreCopyingOriginal{"Copying original .dat e .tr4 files in TRLE folder"};
inline constexpr Message AskRestoreFolders{"Restore also folders: graphics/wads, audio, sound/samples and script?"};
inline constexpr Message RestoringFolder{"Restoring folder: "};
inline constexpr Message ErrorRestoringFolder{"Error, restoring folder: "};
inline constexpr Message RestoreFinished{"Restore finished"};
inline constexpr Message RestoredOriginal{"Restored original Tomb Raider Level Editor configuration"};
inline constexpr Message FastRestoreDone{"Set in Tomb Raider Level Editor, original configuration"};
inline constexpr Message FastRestoreFailed{"Error setting original configuration in trle folder"};
inline constexpr Message MendRoomRemedy{"Make room on the disk, or give yourself the right to write there, and try again."};
inline constexpr Message MendBackupRemedy{"The backup is not there: bring the folder ~1 back, or copy these files from the Level Editor's own setup."};
inline constexpr Message DoctorWaitsRemedy{"Connect its drive; or say where it is now: kestrovactl mend --trle DIR, or kestrovactl mend --archive-folder DIR; or give it up: kestrovactl mend --let-go"};
inline constexpr Message ReasonInterrupted{"interrupted swap"};
inline constexpr Message CannotKeepState{"The savegames of this level could not be kept in a safe place, so nothing was changed: the level that stood in the Level Editor's folder is still there with its savegames. Make room on the disk, or give yourself the right to write there, and try again."};
inline constexpr Message CannotWriteJournal{"The swap could not be noted down in the program's folder, so it was not begun. The Level Editor's folder is as it was. Make room on the disk, or give yourself the right to write there, and try again."};
inline constexpr Message InterruptedSwap{"The last swap was interrupted. The Level Editor's folder has its original configuration again, and every savegame is in its level. Press Play again."};
inline constexpr Message InterruptedBefore{"The last swap was interrupted before it began. Nothing is changed in the Level Editor's folder. Press Play again."};
inline constexpr Message InterruptedRestore{"The last full restore was interrupted. It has been finished now: the Level Editor's folder has its original configuration."};
inline constexpr Message InterruptedFolderGone{"A swap was interrupted, and the Level Editor's folder ~1 is not there now. Connect its drive and start again, or say where it is now: kestrovactl mend --trle DIR. When it is gone for good: kestrovactl mend --let-go. Until then no level can be played. No savegame is lost."};
inline constexpr Message InterruptedFolderOther{"A swap was interrupted in the Level Editor's folder ~1, and what stands there now is another folder, so it was not touched. Say where the first one is now: kestrovactl mend --trle DIR. When it is gone for good: kestrovactl mend --let-go. Until then no level can be played. No savegame is lost."};
inline constexpr Message InterruptedStoreOther{"A swap was interrupted, and what stands in the place of its archive's folder ~1 is another folder, so it was not touched. Say where the first one is now: kestrovactl mend --archive-folder DIR. When it is gone for good, kestrovactl mend --let-go keeps the savegames in the history. Until then no level can be played. No savegame is lost."};
inline constexpr Message AskWhereFolder{"A swap was interrupted, and the Level Editor's folder is not there now, or another one stands in its place:~1~2~3Is it somewhere else?~4Yes: say where it is now.~5No: it is gone for good; savegames stay in their levels' folders.~6Cancel: wait until its drive is connected."};
inline constexpr Message AskWhereStore{"A swap was interrupted, and the archive's folder is not there now, or another one stands in its place:~1~2~3Is it somewhere else?~4Yes: say where it is now.~5No: it is gone for good; the savegames in the Level Editor's folder go to the history.~6Cancel: wait until its drive is connected."};
inline constexpr Message TitleWhereFolder{"Where is the Level Editor's folder now?"};
inline constexpr Message TitleWhereStore{"Where is the archive's folder now?"};
inline constexpr Message AskIsThatFolder{"~1 is not the folder that stood in ~2, as far as its disk tells; a copy on another disk looks so too. Is it that folder?"};
inline constexpr Message NotThatFolder{"~1 was not taken for the folder that stood in ~2, and nothing was changed in it."};
inline constexpr Message LetGoFolder{"The interrupted swap was given up, since its Level Editor's folder ~1 is gone. Every savegame that was kept is in its level's folder or in the history."};
inline constexpr Message WaitingSwapFolder{"a swap was interrupted and waits for the Level Editor's folder ~1"};
inline constexpr Message WaitingSwapStore{"a swap was interrupted and waits for the archive's folder ~1"};
inline constexpr Message WaitingLoan{"a compilation or an installer was interrupted, and the Level Editor's folder has to come back from it"};
inline constexpr Message ForgottenEnded{"An interrupted run had left programs at work in the Level Editor's folder. They were ended: ~1."};
inline constexpr Message LoanKeptMeanwhile{"What had come or changed there meanwhile is kept; \"kestrovactl history originals\" lists it and brings it back: ~1"};
inline constexpr Message LoanReturned{"A compilation or an installer in the Level Editor's folder was interrupted. The folder is as it was before. Start it again."};
inline constexpr Message LoanNotReturned{"A compilation or an installer in the Level Editor's folder was interrupted, and the folder could not come back whole yet. Nothing is lost: what stood there lies in its hidden folder .kv~lent, or in .kv~handed of Kestrova's own folder. Make room on the disk, or give yourself the right to write there, and start again; until then no level can be played."};
inline constexpr Message LoanFolderGone{"A compilation or an installer was interrupted in the Level Editor's folder ~1, which is not there now. It comes back when its drive is connected at a start, or say where it is now: kestrovactl mend --trle DIR. When it is gone for good: kestrovactl mend --let-go."};
inline constexpr Message LoanLetGo{"What was interrupted (a compilation or an installer) was given up, since its Level Editor's folder ~1 is gone."};
inline constexpr Message LoanNoteDamaged{"The note of an interrupted compilation or installer cannot be read. It was set aside: ~1. What stood in the way lies in the hidden folder .kv~lent of the Level Editor's folder, or in .kv~handed of Kestrova's own."};
inline constexpr Message AskBackupOfThis{"The backup is of another Level Editor's folder, ~1, and its files are not those of ~2: a level that goes would bring wrong files back.~3Make a backup of this folder instead? The old backup is set aside, and comes back when its folder is chosen again."};
inline constexpr Message BackupOfAnother{"The backup is still that of another Level Editor's folder: ~1. Do not play levels with it: choose that folder again (kestrovactl setup --trle DIR), or make a backup of this one while it is original (kestrovactl backup --refresh)."};
inline constexpr Message BackupComesBack{"The backup of this Level Editor's folder was set aside when another one was chosen. It is in use again."};
inline constexpr Message BackupNotSetAside{"The backup of another Level Editor's folder could not be set aside, so it is as it was."};
inline constexpr Message AskRestoreFromOther{"The backup is of another Level Editor's folder, ~1, and perhaps of another edition.~3Bring its files into ~2 all the same? What stands there and is not in the backup is kept first."};
inline constexpr Message InterruptedDamaged{"The note about an interrupted swap cannot be read. It was set aside as ~1. Use [Tools->Set original configuration in TRLE] and choose FULL restore."};
inline constexpr Message KeptUnlisted{"These files were changed since the level came in, so they were left where they are: ~1"};
inline constexpr Message WaitingSwap{"a swap was interrupted and will be mended at the next start"};
inline constexpr Message WaitingSavegames{"a move of savegames was interrupted and will be finished at the next start"};
inline constexpr Message WaitingBackup{"a backup was interrupted; what it left is cleared at the next start"};
inline constexpr Message NoBackupToRestore{"There is no backup of the original files, so nothing was removed. Install the Level Editor again over its folder, delete the file ~1 there when it exists, and make a backup: kestrovactl backup --refresh, or [Tools->Create\\Refresh full backup]."};
inline constexpr Message RestoreFolderGone{"The Level Editor's folder is not there: ~1. Nothing was changed. Connect its drive. If it was deleted, make an empty folder of that name and run the full restore again: the backup fills it."};
inline constexpr Message RestoreNotFinished{"The full restore could not be finished. No savegame is lost. It goes on where it stopped at the next start, or with: kestrovactl original --full"};
inline constexpr Message RestoreIncomplete{"The full restore brought back what it could, and not everything. Make room on the disk, or give yourself the right to write there, and run it again ([Tools->Set original configuration in TRLE], Full, or kestrovactl original --full): it goes on where it stopped."};
inline constexpr Message RestoreStillMissing{"Originals that are not back yet: ~1"};
inline constexpr Message RestoreStateLeft{"Savegames, notes and shots of the level that stood there could not be brought to its own folder yet: ~1. They stay that level's; the next start tries it again."};
inline constexpr Message RestoreGoesOn{"The ordinary removal of the level did not end well. The full restore goes on all the same: the originals come back, and the level's savegames go to its own folder."};
inline constexpr Message WaitingOriginals{"original files could not be brought back yet: ~1"};
inline constexpr Message WaitingBrought{"files of a level could not be taken out of the Level Editor's folder yet: ~1"};
inline constexpr Message WaitingState{"savegames, notes and shots that belong to ~1 wait in the Level Editor's folder: ~2"};
inline constexpr Message WaitingStateGone{"savegames, notes and shots that belong to ~1 wait in the Level Editor's folder: ~2; that folder is not there: connect its drive, say where the archive's folder is now (kestrovactl mend --archive-folder DIR), or, when it is gone for good, send them to the history (kestrovactl mend --let-go)"};
inline constexpr Message WaitingStateAway{"savegames, notes and shots that belong to ~1 wait in the Level Editor's folder ~2, which is not there: connect its drive, or say where it is now (kestrovactl mend --trle DIR)"};
inline constexpr Message StateReturned{"The savegames, notes and shots of ~1 that waited in the Level Editor's folder are back with their level: ~2."};
inline constexpr Message StateLetGo{"The folder ~1 is given up. The savegames, notes and shots that waited for it are in the history now: ~2. See kestrovactl history."};
inline constexpr Message RestoreLeft{"Files that were left where they are, because they could not be kept or deleted: ~1"};
inline constexpr Message BackupWithLevel{"The level ~1 stands in the Level Editor's folder, so its files are not the original ones. The backup is as it was. Set the original configuration first, and make the backup then."};
inline constexpr Message BackupNotEqual{"The new backup is not equal to the Level Editor's folder, so the old one was left as it was."};
inline constexpr Message CannotSavePreferences{"The settings could not be saved. They count until the program ends."};
inline constexpr Message OriginalsNotBack{"These original files could not be brought back from the backup: ~1. The next swap tries it again. Make room on the disk, or give yourself the right to write in the Level Editor's folder."};
inline constexpr Message OriginalsNoBackup{"There is no backup in ~1 now, so these files did not come back, and the Level Editor's folder is not original without those of them that are originals: ~2. They are noted. Put the backup back in its place: the next start, the next swap and kestrovactl mend bring them back. When it is gone for good, install the Level Editor again over its folder and make a backup: kestrovactl backup --refresh"};
inline constexpr Message InterruptedNotWhole{"The last swap was interrupted. What it had done has been taken back and every savegame is in its level, but not every original is back."};
inline constexpr Message ReasonForgotten{"the program's folder was lost"};
inline constexpr Message BackupLevelUnknown{"By its marker the level ~1 stands in the Level Editor's folder ~2, and this program's folder knows nothing of the originals that it replaced. Nothing has been changed. Two ways lead on: install the Level Editor anew over that folder, and then say that it is original (kestrovactl setup --trle ~3 --folder-is-original); or take another folder that is original (kestrovactl setup --trle DIR), and bring the savegames over: kestrovactl saves import CODE ~4"};
inline constexpr Message AskForgetLevel{"By its marker the level ~1 stands in the Level Editor's folder ~2, and this program's folder knows nothing of the originals that it replaced.~3Did you install the Level Editor anew over it, so that its files are original? Then its savegames, notes and shots go to the history, and the marker goes."};
inline constexpr Message LevelForgotten{"The marker of the level ~1 is gone, and the folder counts as original from now on. The savegames, notes and shots that stood there are in the history: kestrovactl saves history ~2"};
inline constexpr Message InterruptedStoreGone{"A swap was interrupted, and the folder of its level is not there now: ~1. Connect its drive, or load the archive that it belongs to, and start again; or say where the folder is now: kestrovactl mend --archive-folder DIR. When it is gone for good, kestrovactl mend --let-go keeps the savegames in the history. Until then no level can be played. No savegame is lost."};
inline constexpr Message WorkPending{"Interrupted work must be mended first. Nothing was changed. See what it waits for with kestrovactl doctor, and mend it with kestrovactl mend, or start Kestrova again."};
inline constexpr Message StateNotIn{"Not every savegame of the original configuration could be brought in: ~1. They are still in the folder LEVEL_0000."};
inline constexpr Message WaitingChange{"a change of a level was interrupted and will be finished at the next start"};
inline constexpr Message ChangeFinished{"A change of a level, its savegames or its screen-shots was interrupted. It has been finished now, or is as if it had never begun; nothing is lost."};
inline constexpr Message ChangeNoteDamaged{"The note about an interrupted change of a level, its savegames or its screen-shots cannot be read. It was set aside as ~1, and nothing was changed. Look whether something is missing there: what was replaced is in the level's history."};
inline constexpr Message ChangeUnfinished{"An interrupted change of a level, its savegames or its screen-shots could not be finished yet. Nothing is lost: what it would replace is where it was, or in the history. Connect the drive that is missing, or make the disk writable, and start again; until then no level can be played."};
inline constexpr Message SavegamesFinished{"Moving savegames between the game's slots and the level's archive was interrupted. It has been finished now; no savegame is lost."};
inline constexpr Message SavegamesUnfinished{"An interrupted move of savegames could not be finished yet. No savegame is lost: each is in the game's slots, in the level's archive or in the history. Connect the drive that is missing, or make the disk writable, and start again; until then no level can be played."};
inline constexpr Message StateLeft{"These savegames, notes or shots of the level before could not be taken out of the Level Editor's folder: ~1. They are kept with their own level, and the next level does not take them over. Take away their write protection; the next swap tries it again."};
inline constexpr Message FilesKept{"These files of the Level Editor's folder were held by no backup and no level. They were kept before they went: ~1. The menu Savegames, \"History of savegames\", shows them and brings them back, and so does: kestrovactl history originals"};
inline constexpr Message LeftBehind{"These files of a level could not be deleted and stand in the Level Editor's folder still: ~1. The next start tries it again. Take away their write protection."};

} // namespace kestrova::Msg
