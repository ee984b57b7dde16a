#pragma once

#include "words/message.h"

// clang-format off

/// An archive that changes its folder.
namespace kestrova::Msg
{

inline constexpr Message AskMoveFromDiscs{"Current archive is also on CD~1Do you want transfer whole archive on HD? ~2(Note: if you choose [NO] will be moved only HD (secondary) folder)"};
inline constexpr Message AskOtherUnit{"In current unit letter is not enough free space to move cd archive. ~1Do you want choose a different target unit?"};
inline constexpr Message CopyingFromDiscs{"Copying files from CD to HD"};
inline constexpr Message BringBackCdMissing{"Cd missing"};
inline constexpr Message BringBackErrorCopying{"Error copying folder from [~1] to ["};
inline constexpr Message BringBackDamaged{"The disc # ~1 does not hold the level \"~2\" as it was put there, so that level stays on the disc. Levels that were brought back stay on the hard disk. Clean the disc, or take another copy of it, and try again."};
inline constexpr Message BringBackSome{"Levels on the hard disk now: ~1; still on discs: ~2. Do it again whenever you like: it goes on there."};
inline constexpr Message ReplacedByDisc{"A file of the level is not as its disc has it. The disc's file is the level's now; the other one is kept: ~1"};
inline constexpr Message LevelsBroughtBack{"Levels that came back from their discs: ~1. All of the archive lies in ~2 now."};
inline constexpr Message BringBackNothing{"No level of this archive lies on a disc. Nothing has been changed."};
inline constexpr Message SelectTargetFolder{"Select target folder"};
inline constexpr Message MoveNoRoom{"In drive [~1] free space is not sufficient (it needs ~2 free space.)~3Choose a different target drive, please"};
inline constexpr Message MovingFolders{"moving level subfolders in progress"};
inline constexpr Message MakingSubfolders{"Creating empty subfolders in progress"};
inline constexpr Message RemovingOldFolders{"Removing old level subfolders in progress"};
inline constexpr Message MoveErrorCopying{"Error while copying files"};
inline constexpr Message MoveErrorRemoving{"Error removing folder: "};
inline constexpr Message ArchiveMoved{"Folder archive moved in "};
inline constexpr Message MoveSameFolder{"The archive lies in ~1 already. Nothing has been changed. Choose another folder."};
inline constexpr Message MoveInside{"The folder ~1 lies inside the archive's own folder. Nothing has been changed. Choose one outside of it."};
inline constexpr Message MoveNoFolder{"~1 is a file, or a link that leads nowhere, and no folder. Nothing has been changed. Choose a folder."};
inline constexpr Message MoveLevelsThere{"In ~1 lie levels already, as those of another archive (~2). Nothing has been changed. Choose a folder without any."};
inline constexpr Message MoveNotWritable{"Nothing can be written in ~1. Nothing has been changed. Give yourself the right to write there, or choose another folder."};
inline constexpr Message MoveChangedMeanwhile{"Somebody changed files of the archive while they were copied, so the move was given up."};
inline constexpr Message MoveNothingChanged{"The archive is where it was, and all of it is there. See what the disk says, then try again."};
inline constexpr Message MoveOldStays{"What somebody changed or added while the archive was moved stays in the old folder: ~1. The archive in its new folder is whole. Look through it, then remove it yourself."};
inline constexpr Message MoveCopyStays{"These are no copies of the archive's files any more, so they stay in the folder that it was to move to: ~1. Look through them, then remove them yourself."};
inline constexpr Message MoveTakenBack{"A move of the archive was interrupted before all of it was copied. The archive in ~1 is whole, and the half copy in ~2 is cleared. Move it again whenever you like."};
inline constexpr Message MoveEnded{"A move of the archive was interrupted when all of it was copied. The archive in ~1 is whole and is used from now on; what was left in ~2 is cleared."};
inline constexpr Message MoveNotEnded{"The archive's move to ~1 could not be brought to its end yet. The archive there is whole; nothing is lost. The next start, or kestrovactl mend, ends it."};
inline constexpr Message MoveListNotRead{"A move of the archive ~1 was interrupted, and its file cannot be read now, so nobody can tell which folder counts: ~2 or ~3. Neither is touched. Bring the file back, or give the move up with kestrovactl mend --let-go; then both folders stay, and kestrovactl recover DIR makes a new list of either."};
inline constexpr Message MoveLetGo{"The interrupted move is given up. Both folders stay as they are: ~1 and ~2."};
inline constexpr Message MoveFolderAway{"A move of the archive was interrupted, and its folder ~1 is not there now. What was copied to ~2 so far stays there; the archive does not use it. Remove it yourself once the archive is back."};
inline constexpr Message MoveNoteDamaged{"The note of an interrupted move could not be read. It lies in ~1 now. The archive is in the folder that it names; look whether there is a copy of it elsewhere."};
inline constexpr Message LookingThroughLevels{"Looking through the levels' folders"};
inline constexpr Message ClearingCopy{"Clearing the copy"};
inline constexpr Message EndingMove{"Ending the interrupted move of the archive"};
inline constexpr Message UseMove{"move DIR"};
inline constexpr Message SumMove{"Moves the folders of all levels to DIR. On the same disk their files get their new names beside the old ones; to another one they are copied and compared. Only then the list names DIR, and the old folder goes. A move that is broken off changes nothing, and the next start clears what it left. Of an archive on discs it asks first whether all of it is to come to the hard disk."};
inline constexpr Message KeysMove{"an object with `archive` (its file) and `folder` (where its levels lie now)."};
inline constexpr Message MoveRemedy{"See that the drives of both folders are there, and end it: kestrovactl mend. Or give it up, so that both folders stay: kestrovactl mend --let-go"};
inline constexpr Message WaitingMove{"a move of the archive was interrupted, and has to be ended"};

} // namespace kestrova::Msg
