#pragma once

#include "words/message.h"

// clang-format off

/// Savegames.
namespace kestrova::Msg
{

inline constexpr Message ReasonArchived{"slots freed"};
inline constexpr Message ReasonBeforeRestore{"before a restore"};
inline constexpr Message ReasonEmptySlot{"left in an archive slot without savegames"};
inline constexpr Message ReasonTempLeft{"left in the temporary folder"};
inline constexpr Message ReasonExported{"exported and deleted"};
inline constexpr Message ReasonExportedOver{"replaced by an export"};
inline constexpr Message CannotListSavegames{"It cannot be told now which savegames the level has, so nothing was done. Give yourself the right to read the Level Editor's folder and its file Kestrva.txt, or connect its disk, and try again."};
inline constexpr Message SavegamesArchived{"Current savegames archvied"};
inline constexpr Message SavegamesRestored{"Restored last savegames in tomb raider slots"};
inline constexpr Message SavegamesNotMoved{"The savegames could not be moved. They are where they were. Make room on the disk, or give yourself the right to read and write these files, and try again."};
inline constexpr Message NothingToArchive{"The game's slots hold no savegame, so nothing was done."};
inline constexpr Message ArchivedBefore{"Nothing new went into the archive: savegames with a save number that lies there already: ~1. The newest stays in slot 0 of the game."};
inline constexpr Message ArchivedCounts{"Savegames that went into archive slot ~2: ~1 of ~3; the newest stays in slot 0 of the game."};
inline constexpr Message ArchivedKnown{"With a save number that lay in the archive already: ~1."};
inline constexpr Message SavegamesToHistory{"Savegames with a save number that another one has already, and with other content, that went to the history: ~1 (~2). The menu Savegames, \"History of savegames\", brings them back, and so does: kestrovactl saves bring-back ~3 ID"};
inline constexpr Message RestoreSlotsFull{"All fifteen slots of the game are taken, so nothing was done. Free them first."};
inline constexpr Message RestoreNothingThere{"No archive slot of the level holds a savegame, so nothing was done."};
inline constexpr Message RestoredCounts{"Savegames that came back from archive slot ~2: ~1."};
inline constexpr Message RestoredKnown{"With a save number that stands in the game's slots already: ~1."};
inline constexpr Message RestoredWaiting{"Without room, waiting in the archive: ~1."};
inline constexpr Message NoLevelForSavegames{"No level selected"};
inline constexpr Message NoSavegamesIn{"No savegames in folder: "};
inline constexpr Message NoSavegameSelected{"No savegame selected"};
inline constexpr Message ListSavegamesImport{"Select one or more savegames to import"};
inline constexpr Message ListSavegamesExport{"Select one or more savegame to export"};
inline constexpr Message ChooseExportFolder{"Select folder where save savegames"};
inline constexpr Message TooManySavegames{"Too savegames! Max number of savegames to import in a single operation is "};
inline constexpr Message ImportFailed{"These savegames could not be imported: ~1. They are still where they were."};
inline constexpr Message ExportFailed{"These savegames could not be exported, or not deleted afterwards: ~1. They are still in the level."};
inline constexpr Message ExportOntoItself{"the savegame lies in that folder itself"};
inline constexpr Message MailSubjectOne{"Savegame ~1 of level "};
inline constexpr Message MailSubjectMany{" Savegames of level "};
inline constexpr Message MailFailed{"Error trying to send savegames via email"};
inline constexpr Message HandingToMail{"Handing the savegames to the mail program"};
inline constexpr Message ReasonPlayed{"written by the game"};
inline constexpr Message BroughtBack{"Brought back as ~1."};
inline constexpr Message ExportReplaced{"In ~1 other savegames of these names were replaced; they are in the level's history: ~2."};
inline constexpr Message AskFreeAndBringBack{"All fifteen slots of the game are taken.~1Do you want to put their savegames into the archive and bring this one back then? The newest of them stays in slot 0; nothing is lost."};
inline constexpr Message NotBroughtBack{"The file could not be brought back. It is still in the history."};
inline constexpr Message HistoryLevelGone{"The folder ~1 of the level that the file belongs to is not there. Say where to put the file: kestrovactl history bring-back ~2 --to FOLDER"};

} // namespace kestrova::Msg
