#pragma once

#include "words/message.h"

// clang-format off

/// Start-up, the doctor, the forms' rules, the audio tool.
namespace kestrova::Msg
{

inline constexpr Message ServersNotUsable{"An address of a server begins with http:// or https://; there are three update servers at the most, and one server of wads. Nothing has been changed. Not usable: ~1"};
inline constexpr Message ChooseDownloadFolder{"Select folder where you download level zip files"};
inline constexpr Message ChooseTrlePath{"Select Tomb Raider Level Editor path (trle)"};
inline constexpr Message ChooseGame{"Select 'start tomb raider' program"};
inline constexpr Message ChooseTom2Pc{"Select program to convert .tom in .tr4 files"};
inline constexpr Message FilterPrograms{"Applications (*.exe)|*.exe"};
inline constexpr Message ArchiveFolderNotTaken{"The archive's folder stays as it is; this one was not taken: ~1"};
inline constexpr Message WindowArchiveFolderTooLong{"Its path has more than 220 bytes. Choose a folder with a shorter path."};
inline constexpr Message ArchiveFolderWithoutLevels{"It holds none of this archive's levels. Move their folders there first."};
inline constexpr Message DoctorKeys{"Keys during play"};
inline constexpr Message LevelEditorsFolder{"Level Editor's folder"};
inline constexpr Message DoctorKeysNone{"there is no desktop in this session; they work in the windows"};
inline constexpr Message DoctorKeysX{"F9, F11 and Print Screen are seen, whichever window has the keyboard"};
inline constexpr Message DoctorKeysWaylandX{"Wayland with an X display: F9, F11 and Print Screen are seen while the game is a window of X, as under Wine; on KDE Plasma, System Settings, Legacy X11 App Support must allow it"};
inline constexpr Message DoctorKeysWayland{"Wayland without an X display: F9, F11 and Print Screen do not reach Kestrova"};
inline constexpr Message DoctorKeysRemedy{"Turn on Xwayland in the desktop's settings, or choose the session “on Xorg” when you log in."};
inline constexpr Message RowNoSound{"no wave that can be read"};
inline constexpr Message RowMp3{"---- MP3 ----"};
inline constexpr Message RowBits{"Hz ~1 bits "};
inline constexpr Message GatheringSounds{"Copying audio files in progress..."};
inline constexpr Message ErrorGathering{"Error while copying audio file: ~1"};
inline constexpr Message RemovingTempFiles{"Removing files from temp folder..."};
inline constexpr Message StrangeSounds{"Only ~1 files are converted here. Left out: "};
inline constexpr Message NoSoundsInFolder{"There are no ~1 files there."};
inline constexpr Message ChooseSoundTarget{"Select target folder where to copy audio files"};
inline constexpr Message SetTargetFolder{"Please, set target folder"};
inline constexpr Message NoSounds{"No audio files to convert"};
inline constexpr Message AskListen{"Audio convertion complete~1Do you want listen audio file '"};
inline constexpr Message AskLeaveAudioTool{"Do you want exit from Audio Converter tool?"};
inline constexpr Message PreferencesNotRead{"The preferences could not be read. Nothing has been changed. See that the file may be read, then start again."};
inline constexpr Message PreferencesDamaged{"The preferences are damaged, as after a power cut. What could be read of them counts; the rest is as at the first start. Look through them, and load your archive again if it is not the one that is shown."};
inline constexpr Message PreferencesKept{"The damaged file is kept: ~1"};
inline constexpr Message LastArchiveNotFound{"Last archive not found: "};
inline constexpr Message LoadDifferentArchive{"Do you want load a different archive?"};
inline constexpr Message DoctorProgramFolder{"program's folder"};
inline constexpr Message DoctorBackup{"backup"};
inline constexpr Message DoctorBackupOther{"of another Level Editor's folder: ~1"};
inline constexpr Message DoctorBackupOtherRemedy{"Choose that folder again with kestrovactl setup --trle DIR, or, while this one is original: kestrovactl backup --refresh"};
inline constexpr Message DoctorTrleNotWhole{"~1 is not whole"};
inline constexpr Message DoctorTrleNotWholeRemedy{"Bring the originals back from the backup: kestrovactl original --full. Or say where the right folder is: kestrovactl setup --trle DIR"};
inline constexpr Message DoctorLevels{"levels"};
inline constexpr Message DoctorLevelsWhole{"none lacks a file that it is known to have"};
inline constexpr Message DoctorLevelsLack{"incomplete: ~1"};
inline constexpr Message DoctorLevelsRemedy{"See what they lack with kestrovactl verify CODE, and add those files again from the level's download."};
inline constexpr Message DoctorArchive{"archive"};
inline constexpr Message DoctorInterrupted{"interrupted work"};
inline constexpr Message DoctorGame{"game"};
inline constexpr Message DoctorWine{"Wine"};
inline constexpr Message DoctorTool{"tool ~1"};
inline constexpr Message DoctorDrive{"drive ~1"};
inline constexpr Message DoctorNotYetMade{"~1, is made at the first start"};
inline constexpr Message DoctorWritable{"~1, can be written"};
inline constexpr Message DoctorNotWritable{"~1 cannot be written"};
inline constexpr Message DoctorNotWritableRemedy{"Give yourself the right to write there, or start with another --home folder."};
inline constexpr Message DoctorTrleNotSet{"not set"};
inline constexpr Message DoctorTrleWrong{"~1 is no Level Editor's folder"};
inline constexpr Message DoctorTrleRemedy{"Say where it is: kestrovactl setup --trle DIR, or Browse in the window."};
inline constexpr Message DoctorTrleNotWritable{"Give yourself the right to write there; a level cannot come in otherwise."};
inline constexpr Message DoctorBackupFull{"full"};
inline constexpr Message DoctorBackupCompact{"compact: a level's sounds stay behind when it goes"};
inline constexpr Message DoctorBackupMissing{"not there, so replaced files could not come back"};
inline constexpr Message DoctorNotRead{"the folder ~1 could not be read just now"};
inline constexpr Message DoctorNotReadRemedy{"See that its drive is there and that you may read it, then look again."};
inline constexpr Message DoctorBackupRemedy{"While the Level Editor's folder is original: kestrovactl backup --refresh"};
inline constexpr Message DoctorArchiveNone{"none loaded"};
inline constexpr Message DoctorArchiveNoneRemedy{"Make one with kestrovactl new, or load one with kestrovactl load FILE.kva."};
inline constexpr Message DoctorArchiveDamaged{"~1 cannot be read as an archive"};
inline constexpr Message DoctorArchiveDamagedRemedy{"Load another one with kestrovactl load FILE.kva."};
inline constexpr Message DoctorArchiveFine{"~1, levels: ~2"};
inline constexpr Message DoctorArchiveFolderGone{"the archive's folder ~1 is gone"};
inline constexpr Message DoctorArchiveFolderRemedy{"Mount its disk, or load the archive again and say where the folder is now."};
inline constexpr Message DoctorUnlisted{"folders of no level"};
inline constexpr Message DoctorLeftIntake{"additions cut short"};
inline constexpr Message DoctorLeftIntakeRemedy{"A program ended while it added a level there, so none of these folders holds a whole level. The next start, or kestrovactl mend, clears them away."};
inline constexpr Message DoctorUnlistedRemedy{"The archive's list does not know them; nothing in them is changed. If levels are missing, load a newer copy of the list; a new level of the same number sets such a folder aside."};
inline constexpr Message DoctorUndo{"undo"};
inline constexpr Message DoctorUndoKeeps{"changes that can be undone: ~1; kept for them: ~2"};
inline constexpr Message DoctorUndoUnread{"entries that cannot be read: ~1"};
inline constexpr Message DoctorUndoUnreadRemedy{"They are damaged, or of another version of the program, and lead nowhere back. You can delete these files."};
inline constexpr Message DoctorUndoAside{"~1, with removed levels: ~2"};
inline constexpr Message DoctorSetAside{"folders set aside"};
inline constexpr Message DoctorInterruptedNone{"none"};
inline constexpr Message DoctorInterruptedRemedy{"Finish or undo it with kestrovactl mend, or start Kestrova."};
inline constexpr Message DoctorGameNative{"starts as it is"};
inline constexpr Message DoctorGameWine{"starts through ~1"};
inline constexpr Message DoctorGameRemedy{"Mend that, then press Play again; levels can be changed meanwhile."};
inline constexpr Message DoctorWineNotNeeded{"not needed, the game is no Windows program"};
inline constexpr Message WineAsked{"Wine is asked for its version"};
inline constexpr Message WineNotStarted{"'~1' could not be started."};
inline constexpr Message WineNotThere{"'~1', which should start Windows programs, was not found. Install Wine (on Debian: apt-get install wine), or name another command."};
inline constexpr Message WineIsFine{"Wine is ready."};
inline constexpr Message WineLacks{"Something is still missing before Windows programs can start."};
inline constexpr Message WineAnswers{"~1 answers: ~2"};
inline constexpr Message WineSilent{"~1 did not tell its version, so it may not be Wine."};
inline constexpr Message WineHas32{"It can start 32-bit programs, as the game is one."};
inline constexpr Message WineLacks32{"It has no 32-bit part, so the game would end at once without a word. Install it (on Debian: dpkg --add-architecture i386, apt-get update, apt-get install wine32:i386)."};
inline constexpr Message WinePrefixThere{"Its prefix, where it keeps its drive C: ~1"};
inline constexpr Message WinePrefixNotYet{"There is no prefix yet: ~1. Wine makes it when it starts its first program, which takes some seconds then."};
inline constexpr Message WineGameStarts{"The game can be started: ~1"};
inline constexpr Message WineGameNot{"The game cannot be started: ~1, ~2"};
inline constexpr Message DoctorToolMissing{"not found"};
inline constexpr Message DoctorToolOpenRemedy{"Readme files cannot be opened without it (on Debian: apt-get install xdg-utils)."};
inline constexpr Message DoctorLeftovers{"Leftovers"};
inline constexpr Message DoctorLeftoversThere{"~1: left by a program that was ended, or that could not remove it"};
inline constexpr Message DoctorLeftoversRemedy{"They hold up nothing and nothing in them is needed. The next start, and kestrovactl mend, remove them; what is named again after that is to be removed by hand when no Kestrova runs."};
inline constexpr Message DoctorDriveFree{"~1 free"};
inline constexpr Message DoctorDriveRemedy{"Make room: a swap needs space for the level's files and their expanded form."};
inline constexpr Message DoctorDriveUnknown{"its free space is not known"};
inline constexpr Message LastArchiveAway{"The drive that it is on may not be connected. Once it is there again, open the archive with File, Load Archive. Nothing of it was changed."};
inline constexpr Message AskRestoreAtStart{"~1~2~3The backup has the originals of this folder. Bring them back now (full restore)? What you changed there is kept first."};
inline constexpr Message DoctorLibrary{"notes on the levels"};
inline constexpr Message DoctorLibraryUnread{"~1 could not be read just now, so nothing of it is shown"};
inline constexpr Message DoctorLibraryDamaged{"~1 is damaged, and nothing of it is shown"};
inline constexpr Message DoctorLibraryDamagedRemedy{"Put a copy of the file in its place if you have one. Otherwise nothing has to be done: as soon as something is noted of a level, a new file is begun and the damaged one is kept beside it."};
inline constexpr Message DoctorLibraryEntries{"entries of ~2 that cannot be understood and are not shown: ~1"};
inline constexpr Message DoctorLibraryEntriesRemedy{"Nothing has to be done: they stay in the file as they are. Who knows the file can mend them with a text editor."};

} // namespace kestrova::Msg
