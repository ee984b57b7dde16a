#pragma once

#include "words/message.h"

// clang-format off

/// The chosen level beside the list: its pages, and what is going on with the game.
namespace kestrova::Msg
{

inline constexpr Message AuthorLinkName{"Page or mail address of the author"};
inline constexpr Message AuthorPageTip{"Opens the author's page: ~1"};
inline constexpr Message AuthorMailTip{"Writes to the author: ~1"};
inline constexpr Message PageOverview{"Level"};
inline constexpr Message PageSavegames{"Savegames"};
inline constexpr Message PageSavegamesCount{"Savegames (~1 + ~2)"};
inline constexpr Message PageFiles{"Files"};
inline constexpr Message PageDocuments{"Documents"};
inline constexpr Message PageLog{"Log"};
inline constexpr Message PageFilesName{"Pages of the level"};

inline constexpr Message SavesColumnName{"Savegame"};
inline constexpr Message SavesColumnNumber{"Number"};
inline constexpr Message SavesColumnTitle{"Title"};
inline constexpr Message SavesColumnSaved{"Saved"};
inline constexpr Message SavesGroupLive{"In the game's slots (~1 of ~2)"};
inline constexpr Message SavesGroupSlot{"Archive slot ~1 (~2)"};
inline constexpr Message SavesGroupHistory{"History (~1)"};
inline constexpr Message SavesKeptBecause{"Kept in the history: ~1"};
inline constexpr Message SavesPictureName{"Picture of the chosen savegame"};
inline constexpr Message SavesListName{"Savegames of the level"};
inline constexpr Message SavesNone{"This level has no savegames yet. They appear here once you save in the game; drop savegame files here to import them."};
inline constexpr Message SavesNotRead{"The savegames cannot be listed now: ~1"};
inline constexpr Message SavesFreeTip{"Moves the game's savegames into a new archive slot; the newest stays in slot 0 (F9 while you play)"};
inline constexpr Message SavesFillTip{"Brings the last archive slot back into the game's slots (F11 while you play)"};
inline constexpr Message SavesBringTip{"Puts the chosen savegames into free slots of the game; nothing is overwritten"};
inline constexpr Message SavesExportTip{"Copies the chosen savegames into a folder"};
inline constexpr Message SavesDeleteTip{"Deletes the chosen savegames; the history keeps them"};
inline constexpr Message SavesRestored{"Savegames that came into the game's slots: ~1."};
inline constexpr Message SavesExported{"Savegames that were copied to ~2: ~1."};
inline constexpr Message SavesDeleted{"Savegames that were deleted: ~1. The history has them."};
inline constexpr Message SavesImported{"Savegames that were imported: ~1."};

inline constexpr Message DropSavegames{"Drop to import savegames: ~1"};
inline constexpr Message DropPictures{"Drop to add screen-shots: ~1"};
inline constexpr Message PicturesAdded{"Screen-shots that were added: ~1."};
inline constexpr Message StripName{"Pictures of the level"};

inline constexpr Message FilesColumnName{"File"};
inline constexpr Message FilesColumnSize{"Size"};
inline constexpr Message DocumentsListName{"Documents of the level"};
inline constexpr Message DocumentsNone{"No documents came with this level. Add some with Levels, Properties of current level."};
inline constexpr Message FilesAway{"The level's files cannot be listed now: ~1"};
inline constexpr Message FilesNotOpened{"The file could not be opened."};
inline constexpr Message FilesOpenTip{"A double click opens documents and pictures"};

inline constexpr Message PlayInstalling{"Installing…"};
inline constexpr Message PlayStarting{"Starting…"};
inline constexpr Message PlayRunning{"Running"};
inline constexpr Message PlayLineInstalls{"“~1” is being put into the Level Editor's folder."};
inline constexpr Message PlayLineStarts{"The game is being started on “~1”."};
inline constexpr Message PlayLineRuns{"“~1” is being played, for ~2."};
inline constexpr Message PlayLineRunsUnknown{"A program runs in the Level Editor's folder."};
inline constexpr Message PlayTimeMinutes{"~1 min"};
inline constexpr Message PlayTimeHours{"~1 h ~2 min"};
inline constexpr Message PlayShowTip{"Brings the game's window to the front"};
inline constexpr Message PlayStopTip{"Ends the game, after a question"};
inline constexpr Message PlayNotShown{"The game's window cannot be brought to the front here."};
inline constexpr Message AskStopGame{"End the game (~1)? What was not saved in it is lost."};
inline constexpr Message AskKillGame{"The game was asked to end and still runs (~1). End it by force? What was not saved in it is lost."};
inline constexpr Message GameNotEnded{"The game could not be ended."};
inline constexpr Message NotifyTitle{"Kestrova"};
inline constexpr Message NoteUndo{"Undo"};
inline constexpr Message NoteUndoOf{"Undo ~1 (Ctrl+Z)"};
inline constexpr Message NoteDone{"Done: ~1."};

inline constexpr Message MarkNew{"New"};
inline constexpr Message MarkPlaying{"Playing"};
inline constexpr Message MarkFinished{"Finished"};
inline constexpr Message MarkGivenUp{"Given up"};
inline constexpr Message MarkStatusName{"How far you are"};
inline constexpr Message MarkOwnNoteName{"Your own note"};
inline constexpr Message MarkOwnNoteHint{"Your own note on this level"};
inline constexpr Message MarkAdded{"Added ~1"};
inline constexpr Message MarkLastPlayed{"Last played ~1"};
inline constexpr Message MarkPlayed{"Played for ~1"};
inline constexpr Message MarkTags{"Tags: ~1"};

inline constexpr Message StarsName{"Stars"};
inline constexpr Message StarsNone{"No stars"};
inline constexpr Message StarsGiven{"Stars: ~1 of 5"};
inline constexpr Message StarsTip{"Click a star, or type 0 to 5; four or five stars make a favourite"};

} // namespace kestrova::Msg
