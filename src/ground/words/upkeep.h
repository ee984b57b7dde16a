#pragma once

#include "words/message.h"

// clang-format off

/// A whole archive: load, new, recompress, leftovers.
namespace kestrova::Msg
{

inline constexpr Message KilledEditUndone{"The change of the level \"~1\" was interrupted before it was accepted. Its files are as they were before."};
inline constexpr Message KilledEditNotUndone{"The change of the level \"~1\" was interrupted, and its files could not be put back yet. They are kept; the next start, or kestrovactl mend, tries it again."};
inline constexpr Message EqualScanning{"Scanning for equal levels"};
inline constexpr Message EqualOfLevels{" of: ~1 level"};
inline constexpr Message EqualCdNotAvailable{"Cd not available: control for equal level aborted"};
inline constexpr Message AskEqualFound{"Warning: tr4 file ~1has same name and same size of tr4 file in level: ~2Continue scanning for equal levels?"};
inline constexpr Message EqualCount{"Check for equal levels terminated.~1There are ~2 equal levels"};
inline constexpr Message EqualNone{"Check for equal levels terminated.~1There is no equal level."};
inline constexpr Message CreatingTr4Infos{"Creating tr4.inf files in progress"};
inline constexpr Message Tr4InfosCdMissing{"Missing cd. Creating tr4.inf files aborted"};
inline constexpr Message Tr4InfosErrorDecompressing{"Error decompressing files of level ["};
inline constexpr Message Tr4InfosVanished{"Levels whose folders are gone: ~1. Nothing could be indexed for them. All the others are indexed. Bring the folders back, or remove the levels from the archive."};
inline constexpr Message Tr4InfosMoreVanished{" and ~1 more"};
inline constexpr Message Tr4InfosErrorWriting{"The tr4.inf of level [~1] could not be written, so this level is not compared with others yet. No level was changed. Make room on the disk, or give yourself the right to write there, and try again."};
inline constexpr Message ErrorLastArchive{"Error loading last archive: "};
inline constexpr Message ArchiveSizes{"Level files: ~1~2Savegames and screen-shots: ~3~4All together: ~5"};
inline constexpr Message ArchiveSizesStopped{"You stopped it, so some of these sizes are old ones."};
inline constexpr Message CannotOpenArchive{"This file cannot be opened as an archive: ~1. It is missing, cut short, or no archive at all. Nothing was changed; whatever was loaded before still is. Choose another file, or put a copy of this one in its place."};
inline constexpr Message LastArchiveDamaged{"It is cut short, or no archive at all. Nothing was changed, and the levels' folders are where they were. Put a copy of this file in its place and open that with File, Load Archive."};
inline constexpr Message LoadArchiveTitle{"Load Tomb Raider Level Archive"};
inline constexpr Message LoadArchiveFilter{"Level Archive Files (*.kva)|*.kva"};
inline constexpr Message SaveArchiveTitle{"Save current archive as ..."};
inline constexpr Message SaveArchiveFilter{"Kestrova archives (*.kva)|*.kva"};
inline constexpr Message SelectArchiveFolder{"Select main folder for new archive"};
inline constexpr Message OriginalLevelName{"- TRLE: Original configuration -"};
inline constexpr Message OriginalLevelNote{"Original configuration Tomb Raider Level Editor"};
inline constexpr Message OriginalAuthor{"Eidos Interactive (TM) & Core Design LTD"};
inline constexpr Message ArchiveFolderChanged{"Warning. Folder for new archive must be empty. Folder has been changed in: "};
inline constexpr Message CannotWriteArchiveFolder{"Error: I can not write in main archive folder: "};
inline constexpr Message ArchiveFolderTooLong{"The name of this folder is too long for an archive: ~1. Levels' folders grow from it, so it may have 220 letters at most. Nothing was made in it. Choose a folder with a shorter name."};
inline constexpr Message NoArchiveNameFree{"There are a hundred archives in the program's folder already, so no name is free for a new one. Remove one that you no longer need, or give the new one a name of your own."};
inline constexpr Message AskReplaceArchive{"There is an archive ~1 already. Do you want to replace it by a new, empty one? The folders of its levels stay, but no archive lists them then."};
inline constexpr Message MainFolderMissing{"Warning: not found main folder of current archive: ~1If you have moved folder or there is a change of unit letters, select new correct folder"};
inline constexpr Message SayLevelsFolder{"Nothing has been changed. Say where the levels lie now: kestrovactl load FILE.kva --folder DIR"};
inline constexpr Message NoFolderThere{"There is no folder ~1, so the archive was not loaded. Nothing has been changed. Name the folder in which its levels lie."};
inline constexpr Message NoLevelsThere{"In the folder ~1 lies none of this archive's levels, so it was not taken and the archive was not loaded. Nothing has been changed. Name the folder in which they lie; its sub-folders are called LEVEL_0001 and so on."};
inline constexpr Message AskNoLevelsThere{"In the folder ~1 lies none of this archive's levels. Do you want to take it nevertheless? Their files are missing then until you name the right folder: kestrovactl load FILE.kva --folder DIR"};
inline constexpr Message SecondaryFolderMissing{"Warning: not found secondary folder of current archive: ~1If you have moved folder or there is a change of unit letters, select new correct folder"};
inline constexpr Message SelectFolder{"Select folder: "};
inline constexpr Message MoreInfoAllOnHd{"Current archive is not on CD. All [more info] file are already on HD :-)"};
inline constexpr Message MoreInfoErrorCopying{"Error copying"};
inline constexpr Message AskChangeCompression{"Compression settings have been changed. ~1Do you want change compress status of old level files? ~2Note: if you choose NO, current settings will be used only for new levels"};
inline constexpr Message ChangingCompression{"Change compression status"};
inline constexpr Message ChangingLevel{"Changing level: "};
inline constexpr Message DeflatingFiles{"Zipping files"};
inline constexpr Message ExpandingFiles{"Unzipping files"};
inline constexpr Message WordCompression{"compression"};
inline constexpr Message WordDecompression{"decompression"};
inline constexpr Message ChangingFile{" file '~1' in progress"};
inline constexpr Message AskErrorChangingFile{"Error ~1 file: ~2Do you want continue?"};
inline constexpr Message CompressionChanged{"New size [files] folders = ~1Old size [files] folders = ~2Note: levels on cd have been not changed"};
inline constexpr Message CompressionPartlyChanged{"It was ended before the last level. Some levels have the old form and some the new one; that is harmless, since each file is read as what it is. Do it again whenever you like."};
inline constexpr Message ErrorDroppingOldForm{"The old form of some files could not be removed in ~1. The level is whole; the files are there twice. Give yourself the right to write there, and try again."};
inline constexpr Message PicturesCompressed{"Loading pictures that are kept as JPEG now: ~1. They look nearly the same and do not come back bit by bit; the level's own download has the picture as it was."};

} // namespace kestrova::Msg
