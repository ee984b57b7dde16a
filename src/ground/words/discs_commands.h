#pragma once

#include "words/message.h"

// clang-format off

/// The terminal's commands for discs.
namespace kestrova::Msg
{

inline constexpr Message UseDiscsDrives{"discs drives"};
inline constexpr Message SumDiscsDrives{"Lists the drives for discs: those of this machine, and those that the settings name (set drives)."};
inline constexpr Message KeysDiscsDrives{"an array of objects with `name`, `model`, `device`, `emulated`, `writer`, `medium` (`none`, `blank`, `written`, `unknown`), `label`, `folder`, `total`, `free`."};
inline constexpr Message UseDiscsInsert{"discs insert DRIVE IMAGE"};
inline constexpr Message SumDiscsInsert{"Puts the image IMAGE into a drive of the settings; where that drive writes, a file that is not there yet is a new blank disc."};
inline constexpr Message UseDiscsEject{"discs eject DRIVE"};
inline constexpr Message SumDiscsEject{"Opens the drive; a drive of the settings gives up its disc, whose file stays where it is."};
inline constexpr Message UseDiscsList{"discs list IMAGE [--tree|--reference]"};
inline constexpr Message SumDiscsList{"Lists what lies on the image of a disc: a path a line, with --tree each below its folder, with --reference with sizes and dates."};
inline constexpr Message KeysDiscsList{"an array of objects with `path`, `folder`, `size`, `date`."};
inline constexpr Message UseDiscsBlank{"discs blank DRIVE all|fast"};
inline constexpr Message SumDiscsBlank{"Blanks the disc in a drive, all of it or fast; it asks first."};
inline constexpr Message UseDiscsPlan{"discs plan [--capacity MB] [--drive D] [--with trle]"};
inline constexpr Message SumDiscsPlan{"Shows which levels would go onto which disc; --capacity MB is 650, 700, 4700 (without the option), 23098 (blu-ray), or any other number from 10 on. A drive of the settings knows its own."};
inline constexpr Message KeysDiscsPlan{"an object with `capacity`, `image` (bytes of all images), `discs` (`number`, `label`, `bytes`, `image`, `tooLarge`, `levels`), `leftOut`."};
inline constexpr Message UseDiscsCreate{"discs create [--images DIR|--drive D] [--capacity MB] [--speed N] [--with trle] [--setup FILE] [--remove|--keep]"};
inline constexpr Message SumDiscsCreate{"Writes the discs in the drive --drive D, or their images into the folder --images DIR; --with trle puts the Level Editor's folder onto the first one, --setup FILE the setup of Kestrova. Each disc is read back and compared. With --remove the levels then leave the hard disk, with --keep nothing changes in the archive; without either you are asked."};
inline constexpr Message KeysDiscsCreate{"the object of discs plan."};
inline constexpr Message UseDiscsVerify{"discs verify [--all]"};
inline constexpr Message SumDiscsVerify{"Looks whether each level's disc is there; with --all every file is compared with what was written."};
inline constexpr Message KeysDiscsVerify{"an array of objects with `disc`, `code`, `good`, `fault`."};
inline constexpr Message UseDiscsImage{"discs image FILE"};
inline constexpr Message SumDiscsImage{"FILE is an image of a disc of the loaded archive: the levels on it are played from it."};
inline constexpr Message UseDiscsInstall{"discs install FILE FOLDER [--full|--compact]"};
inline constexpr Message SumDiscsInstall{"Brings an archive to the hard disk whose file lies on a disc, or on the image FILE of its first disc, into a folder of its own in FOLDER, and loads it; with --full the files of the levels come too, each compared with what its disc was made of, otherwise they stay on the discs."};
inline constexpr Message KeysDiscsInstall{"the keys of `load`."};
inline constexpr Message UseDiscsBringBack{"discs bring-back [DIR]"};
inline constexpr Message SumDiscsBringBack{"Brings the files of all levels from the archive's discs to the hard disk, each compared; with DIR the archive's folder moves there too. What was broken off goes on at the next call."};
inline constexpr Message WrongListForm{"--tree and --reference are forms of discs list, one at a time."};
inline constexpr Message WrongBlankExtent{"discs blank wants the drive and 'all' or 'fast'."};
inline constexpr Message AskBlankDisc{"Blank the disc '~1' in the drive '~2'? What is on it is gone then. Files of levels that were removed from the hard disk may lie nowhere else."};
inline constexpr Message WrongDiscsWord{"'~1' is nothing that discs can do; it can: ~2"};
inline constexpr Message WrongDiscsCount{"discs ~1 wants another number of words; see --help"};
inline constexpr Message WrongDiscsOption{"~1 does not go with discs ~2"};
inline constexpr Message WrongDiscsJson{"--json does not go with discs ~1"};
inline constexpr Message WrongBothSetups{"--full and --compact exclude each other."};
inline constexpr Message NoFileToInstall{"There is no file ~1. Nothing has been changed."};
inline constexpr Message FileOnNoDisc{"~1 lies on no disc. kestrovactl load loads an archive of the hard disk."};
inline constexpr Message NoArchiveOnImage{"On ~1 lies no archive's file. That is on the first disc of a set."};
inline constexpr Message ImageNotTaken{"The image was not taken. Nothing has been changed."};
inline constexpr Message NoDriveAtAll{"This machine has no drive for discs, and the settings name none. A drive whose discs are files can be named: see set drives."};
inline constexpr Message NoSuchDrive{"There is no drive '~1'. The drives are: ~2"};
inline constexpr Message DriveOfSettings{"of the settings"};
inline constexpr Message DriveWrites{"writes"};
inline constexpr Message DriveReads{"reads"};
inline constexpr Message DriveWithoutDisc{"no disc"};
inline constexpr Message DriveWithBlank{"blank, ~2 free"};
inline constexpr Message DriveWithDisc{"disc '~1', ~2"};
inline constexpr Message DriveUnknown{"a disc that cannot be read"};
inline constexpr Message DriveHolds{"  holds: ~1"};
inline constexpr Message DriveSeenIn{"  seen in: ~1"};
inline constexpr Message DoctorDiscDrive{"Drive for discs '~1'"};
inline constexpr Message DoctorDiscGone{"its disc ~1 is not there"};
inline constexpr Message DoctorDiscGoneRemedy{"Bring the file back, or put another one in: kestrovactl discs insert ~1 IMAGE"};
inline constexpr Message DoctorPlaceTaken{"its disc cannot be seen in ~1, where other files lie"};
inline constexpr Message DoctorPlaceTakenRemedy{"Empty that folder, or name another one: kestrovactl set drives"};
inline constexpr Message DoctorDiscTool{"Program '~1', for discs"};
inline constexpr Message DoctorDiscToolMissing{"not installed"};
inline constexpr Message TakesDrive{"NAME=FILE|FOLDER|MEGABYTES|writes, where FILE and what stands behind FOLDER may be missing, or NAME= to forget the drive. No two drives have one file or one folder"};

} // namespace kestrova::Msg
