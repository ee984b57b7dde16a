#pragma once

#include "words/message.h"

// clang-format off

/// Checks of stored files, and their repair.
namespace kestrova::Msg
{

inline constexpr Message RepairFromTrle{"the Level Editor's folder"};
inline constexpr Message RepairFromBackup{"the backup of the originals"};
inline constexpr Message RepairFromVault{"the originals that were kept"};
inline constexpr Message RepairFromUndo{"what the level keeps for undoing"};
inline constexpr Message RepairFromLevel{"the level \"~1\""};
inline constexpr Message RepairFromAside{"the folder that was set aside, ~1"};
inline constexpr Message RepairFromOffered{"the package"};
inline constexpr Message RepairFromDisc{"the disc ~1"};
inline constexpr Message RepairOpening{"Opening ~1"};
inline constexpr Message RepairLooking{"Looking for the content of ~1"};
inline constexpr Message RepairOnDisc{"The level's files lie on a disc, which nobody can change. Make the disc again from the level's download."};
inline constexpr Message RepairNotNoted{"Nobody noted what it held, so nothing can be proved to be it. Add the file again in the properties of the level."};
inline constexpr Message RepairInTheWay{"A folder, or a link that leads out of the level, stands in its place. Move ~1 away and repair once more."};
inline constexpr Message RepairNowhere{"No source here holds what was noted. Give the level's download as the package to repair from."};
inline constexpr Message BackupNowhere{"No source here holds what was noted. Put this file of the Level Editor's own setup into the Level Editor's folder, and repair once more."};
inline constexpr Message BackupInTheWay{"Something that is no file of the backup stands in its place, and could not be taken out of it. Move ~1 away and repair once more."};
inline constexpr Message RepairSetAside{"This file could not be read, so it was set aside before the repair put a whole one in its place: ~1"};
inline constexpr Message BackupNotPut{"Its content was found, but it could not be put into the backup: ~1"};
inline constexpr Message RepairNotMade{"Its content was found, but its stored form could not be made: ~1"};
inline constexpr Message ReasonRepaired{"replaced by a repair"};
inline constexpr Message CheckUnderWay{"Checking the levels"};
inline constexpr Message CheckingLevel{"Checking ~1"};
inline constexpr Message RepairUnderWay{"Repairing the levels"};
inline constexpr Message NotRepaired{"The files of \"~1\" could not be repaired. Those that stood there are there, or in what can be undone."};
inline constexpr Message RepairNotOpened{"Nothing was repaired, since this could not be opened: ~1"};
inline constexpr Message CheckDone{"Levels checked: ~1, with ~2 files. Damaged or missing: ~3."};
inline constexpr Message CheckRepaired{"Brought back: ~1."};
inline constexpr Message CheckNotedNow{"Levels noted now, with nothing to compare with yet: ~1."};
inline constexpr Message CheckUnchecked{"Levels that could not be checked: ~1."};
inline constexpr Message FaultMissing{"missing"};
inline constexpr Message FaultDiffers{"changed"};
inline constexpr Message FaultCut{"too short"};
inline constexpr Message FaultDamaged{"damaged"};
inline constexpr Message FaultUnreadable{"cannot be read"};
inline constexpr Message FaultInTheWay{"something else in its place"};
inline constexpr Message FaultUnexpected{"not noted"};
inline constexpr Message FaultUnchecked{"not checked"};
inline constexpr Message NoteNotRead{"What was noted of the level's stored files cannot be read (~1). The level was not checked, and nothing of it was changed. Move ~2 away and check once more: what stands there is noted anew then."};
inline constexpr Message CheckAllOrCodes{"Either --all or the codes of levels."};
inline constexpr Message CheckFromNeedsRepair{"--from names what --repair takes files from: add --repair."};
inline constexpr Message RepairWaits{"An earlier change could not be finished, so nothing was repaired."};
inline constexpr Message CheckHint{"\"Check this level\" or \"Check all\" compares stored files with what was noted when they were stored."};
inline constexpr Message CheckAllWhole{"Everything that was checked is whole."};
inline constexpr Message CheckStopped{"Stopped. What was found until then is shown."};
inline constexpr Message CheckStateName{"State of folders and tools"};
inline constexpr Message CheckListName{"Files with faults"};
inline constexpr Message CheckColumnWhat{"What"};
inline constexpr Message CheckColumnState{"State"};
inline constexpr Message CheckColumnLevel{"Level"};
inline constexpr Message CheckColumnFile{"File"};
inline constexpr Message CheckColumnFault{"Fault"};
inline constexpr Message CheckColumnSource{"Can be repaired from"};
inline constexpr Message CheckChoosePackage{"The package to repair from"};
inline constexpr Message CheckNoSource{"(no source known)"};
inline constexpr Message DoctorChecked{"stored files"};
inline constexpr Message DoctorCheckedHarmed{"not whole when they were checked last: ~1"};
inline constexpr Message DoctorCheckedRemedy{"kestrovactl verify --repair, or menu Tools, Check and repair, brings back what can be."};
inline constexpr Message DoctorNotesUnread{"what was noted of them cannot be read: ~1"};
inline constexpr Message DoctorNotesRemedy{"Move undo/stored.json out of these levels' folders and run kestrovactl verify --all: what stands there is noted anew then."};
inline constexpr Message UseVerify{"verify [CODE ... | --all] [--repair [--from PACKAGE]]"};
inline constexpr Message SumVerify{"Compares what stands in the Level Editor's folder with marker, archive and backup, and the backup with what was noted when it was made; with codes (0: the backup of the originals), looks whether the stored files of these levels are whole, by the hashes that were noted when they were stored, and names what they should hold and lack; with --all, both, of every level. With --repair, what is damaged or missing in those levels (without codes, in all, and in the backup) comes back from where its content still is: the Level Editor's folder, the backup, the originals that were kept, what is kept for undoing, another level, a disc of the archive whose image or medium is at hand, and with --from a package, folder or file. A difference that stays gives exit code 1."};
inline constexpr Message KeysVerify{"an object with `code` (unless several levels are looked at) and `differences`, an array of objects with `kind` (`missing`, `differs`, `cut`, `damaged`, `unreadable`, `in-the-way`, `unexpected`, and of the Level Editor's folder `backup-damaged`: it is the backup's file that is not as it was), `file`, and of several levels `code`, 0 for the backup of the originals, of levels where they are known `source` (who still holds the content) and `remedy`; of levels too `repaired` (`code`, `file`, `from`), `unchecked` (`code`, `reason`), `noted` (codes of levels that were noted now), and with --all `folder`, as `differences`."};
inline constexpr Message VerifyFailed{"It could not be verified. Nothing has been changed."};
inline constexpr Message VerifyNoBackup{"There is no backup in ~1 now, so nobody can tell whether the originals are whole."};
inline constexpr Message VerifyFine{"No difference."};

} // namespace kestrova::Msg
