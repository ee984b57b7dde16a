#pragma once

#include "archive/level_folders.h"
#include "formats/change_note.h"
#include "history/change_parts.h"

#include <set>

/// Changes of what a player has. Each is worked out beforehand and noted in `swap/savegames` of the
/// program's folder, then made. A program that is killed in the middle of it goes on where it was
/// at its next start. What is left of the note then is the entry by which the change can be undone
/// (`history/undo_entries.h`).
///
/// New names are written first. Then whatever loses its place is kept: in the history what exists
/// nowhere else, and in the entry's own folder what the change could not be undone without. Only
/// then files are overwritten, and at last those that are no longer wanted are deleted, each only
/// when its content was read back from another place and flushed. A file that is neither as it was
/// nor as it is to become has been written by somebody else since: it stays.
namespace kestrova
{

/// A change of what a level has, with all that its entry tells, and nothing in it that changes yet.
/// The level may be one that the archive does not know yet, or not any more.
Change NewChange(const ChangeParts& parts, ChangeKind kind, LevelCode code);
/// What goes is of the level's own files: it is kept beside them, under a second name where the
/// file system can, and not in the history.
void AreLevelsFiles(const Folders& folders, Change& change);

/// Files of a folder with their contents, as those that are to go.
Result<ChangedFolder> FilesThatGo(const Path& folder, const std::vector<Path>& files);
/// The same for those that came.
Result<ChangedFolder> FilesThatCame(const Path& folder, const std::vector<Path>& files);

/// Notes the change and makes it, as far as its folders go. `elsewhere`: hashes of contents that
/// other files hold which take no part. A content that is nowhere any more fails it before anything
/// changes. A failure before anything was overwritten or deleted takes back what was done; a later
/// one leaves the note, and the next start, or the next change, finishes the work.
Status MakeChange(const ChangeParts& parts, const Change& change,
                  const std::set<std::string>& elsewhere = {}, const Heartbeat& beat = {});
/// Notes a change whose work is done by the caller: a record that comes or goes, a folder that is
/// moved. A killed one is decided by the archive's file.
Status NoteChange(const Folders& folders, const Change& change);
/// The change never came about: its note goes, and what it kept.
void DropChange(const Folders& folders, const Change& change);
/// Flushes the change; its note becomes an entry. The change is whole, its record written.
Status EndChange(const Folders& folders, const ProgramSettings& settings, const Change& change);
/// Puts how many savegames lie in archive slots into the record that the change names, if it does.
/// A record that is missing or damaged is made anew when its level is looked at, and then has none.
void WriteArchivedCount(const Change& change, std::int32_t archivedCount);
/// An entry for what was done already and took nothing away. Without one, where it cannot be
/// written, all is as before there was a way back.
void NoteDone(const Folders& folders, const ProgramSettings& settings, const Change& change);

/// True while a change waits to be finished.
bool ChangeWaits(const Folders& folders);
/// True while it is one between the game's slots and a level's archive slots, or one that nobody
/// can read.
bool SavegameMoveWaitsIn(const Folders& folders);
/// Finishes a change that a killed or failed run left, its record with it. What another hand took
/// away meanwhile is passed over, and not counted. Nothing to do is done. The list in memory
/// follows when it is of the archive's file. `Damaged` for a note that nobody can read: it waits no
/// more, and lies under the name that is the failure's subject.
Status FinishChange(Machine& machine, const Folders& folders, Archive& archive,
                    const ProgramSettings& settings);

} // namespace kestrova
