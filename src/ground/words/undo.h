#pragma once

#include "words/message.h"

// clang-format off

/// Changes that are undone, and done again.
namespace kestrova::Msg
{

inline constexpr Message UndoOf{"Undo ~1"};
inline constexpr Message RedoOf{"Redo ~1"};
inline constexpr Message UndoNone{"Undo"};
inline constexpr Message RedoNone{"Redo"};
inline constexpr Message UndoUnderWay{"Undoing: ~1"};
inline constexpr Message RedoUnderWay{"Doing again: ~1"};
inline constexpr Message Undone{"Undone: ~1."};
inline constexpr Message UndoneUnderNumber{"Undone: ~1. Another level has the number ~2, so it has the number ~3 now."};
inline constexpr Message Redone{"Done again: ~1."};
inline constexpr Message NothingToUndo{"There is nothing that could be undone."};
inline constexpr Message NothingToRedo{"There is nothing that could be done again."};
inline constexpr Message UndoUnknown{"No change has the number ~1. kestrovactl undo --list shows them."};
inline constexpr Message UndoUnread{"This entry is damaged, or of another version of the program, and leads nowhere back: ~1."};
inline constexpr Message AskUndoOther{"An older change can be undone on its own: ~1. Undo that one instead?"};
inline constexpr Message AskRedoOther{"Another change can be done again on its own: ~1. Do that one again instead?"};
inline constexpr Message NotUndone{"This was not undone, and nothing was changed: ~1."};
inline constexpr Message UndoUnfinished{"This is not wholly undone yet: ~1. The rest is done at the next start; what it would replace and nobody else has is in the history."};
inline constexpr Message UndosNotRead{"What can be undone cannot be read now. Nothing was changed."};
inline constexpr Message NotesNotFollowed{"The level is back under another number, but not all that was noted of it (stars, note, kept files) could follow."};
inline constexpr Message ReasonUndone{"a change undone"};

inline constexpr Message DidSlotsFreed{"freeing the slots of \"~2\""};
inline constexpr Message DidSlotsFilled{"bringing back savegames of \"~2\""};
inline constexpr Message DidSavegamesImported{"import of savegames into \"~2\" (~1)"};
inline constexpr Message DidSavegamesExported{"deletion of exported savegames of \"~2\" (~1)"};
inline constexpr Message DidSavegamesDeleted{"deletion of savegames of \"~2\" (~1)"};
inline constexpr Message DidLevelRepaired{"repair of \"~2\""};
inline constexpr Message DidSavegameBroughtBack{"bringing back ~1 of \"~2\""};
inline constexpr Message DidShotAdded{"adding screen-shot ~1"};
inline constexpr Message DidShotCaptured{"capture of screen-shot ~1"};
inline constexpr Message DidShotReplaced{"replacing screen-shot ~1"};
inline constexpr Message DidShotDeleted{"deletion of screen-shot ~1"};
inline constexpr Message DidShotRenamed{"renaming of screen-shot ~1"};
inline constexpr Message DidShotsImported{"import of screen-shots into \"~2\" (~1)"};
inline constexpr Message DidLevelEdited{"change of level \"~2\""};
inline constexpr Message DidLevelRemoved{"removal of level \"~2\""};
inline constexpr Message DidLanguageChanged{"your language in level \"~2\""};
inline constexpr Message DidWadsImported{"import of wads (~1)"};
inline constexpr Message DidLanguageRestored{"own language of level \"~2\""};
inline constexpr Message DidMarkedStatus{"status of \"~2\""};
inline constexpr Message DidMarkedStars{"stars of \"~2\""};
inline constexpr Message DidMarkedTags{"tags of \"~2\""};
inline constexpr Message DidMarkedNote{"own note of \"~2\""};
inline constexpr Message DidMarkedCover{"cover of \"~2\""};
inline constexpr Message DidLevelMarked{"marks of \"~2\""};
inline constexpr Message DidLevelsMarked{"marks of ~1 levels"};
inline constexpr Message DidFilesLeft{"removal of the files of level \"~2\", which lie on disc # ~1, from the hard disk"};

inline constexpr Message UndoChangedSince{"The file is no longer as that change left it, and stays as it is. What went with that change is still kept: kestrovactl history lists savegames and screen-shots. Other changes can be undone on their own: kestrovactl undo --list shows their numbers."};
inline constexpr Message UndoNameTaken{"Another file has this name since, and stays as it is. Give it another name, or take it away, and try again. Other changes can be undone on their own: kestrovactl undo --list shows their numbers."};
inline constexpr Message UndoFolderGone{"The folder is not there any more, or it was moved. Bring it back, or connect its drive, and try again."};
inline constexpr Message UndoOtherArchive{"It was made in another archive, or in a folder of levels that was moved since. Load that archive (kestrovactl load FILE.kva), or bring the folder back, and try again."};
inline constexpr Message UndoOtherLevel{"The level that it was done to is not there any more: another one has its place, and stays as it is. Other changes can be undone on their own: kestrovactl undo --list shows their numbers."};
inline constexpr Message UndoElsewhereNow{"The level's savegames stood in this folder then, and stand elsewhere now. Bring them back there and try again: play the level if that is the Level Editor's folder (kestrovactl play ~1 --no-start), otherwise another one."};
inline constexpr Message UndoLevelGone{"The level is not in the archive any more. Bring it back first: kestrovactl undo --list shows whether its removal can be undone."};
inline constexpr Message UndoRecordOther{"What the archive says of the level has been changed since, and stays as it is. Other changes can be undone on their own: kestrovactl undo --list shows their numbers."};
inline constexpr Message UndoMarksOther{"What you said of this level has been changed since, and stays as it is. Other changes can be undone on their own: kestrovactl undo --list shows their numbers."};
inline constexpr Message UndoNumberTaken{"Another level has got the number ~1 since, and stays as it is. The removed level's folder waits as the one named here, and can be added as a new level: kestrovactl add FOLDER."};
inline constexpr Message RedoNoRoom{"What is kept so that changes can be undone has no room for this level, so that its removal could not be undone once more. Give it more room (kestrovactl set undo-megabytes NUMBER), or remove the level again by itself."};
inline constexpr Message UndoContentGone{"What was kept of this file is damaged or gone."};

inline constexpr Message UndoLine{"~1  ~2  ~3  ~4"};
inline constexpr Message UndoLineRedo{"~1 (was undone)"};
inline constexpr Message UndoLineGone{"~1 (the level is not in the archive now)"};
inline constexpr Message UndoLineOtherEditor{"~1 (of another Level Editor's folder)"};
inline constexpr Message UndoLineElsewhere{"~1 (of another archive)"};

} // namespace kestrova::Msg
