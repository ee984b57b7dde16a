#pragma once

#include "core/whole_tree.h"
#include "formats/move_note.h"
#include "session/folders.h"
#include "session/settings.h"

#include <optional>

/// The move of an archive to another folder, as far as its mending after a kill needs it. The list
/// decides: what it names has the whole archive, and the other folder goes.
namespace kestrova
{

Path MoveNotePath(const Folders& folders);
/// No value when there is none; `Damaged` when there is one that nobody can read.
Result<std::optional<MoveNote>> ReadMoveNote(const Folders& folders);
Status WriteMoveNote(const Folders& folders, const MoveNote& note);
Status DropMoveNote(const Folders& folders);
/// True while a move waits to be ended.
bool MoveWaits(const Folders& folders);

/// The folder of the levels that the list in that file names.
Result<Path> FolderOfList(const ProgramSettings& settings, const Path& file);

/// Removes what was moved from the old folder: each file only while its copy holds the same bytes,
/// or, of `copied`, while nobody changed it since it was copied and compared. Without `copied` all
/// that belongs to the archive there is held against the copies.
Status RemoveMoved(const MoveNote& note, const WholeTree* copied, const Heartbeat& heartbeat = {});
/// Removes from the new folder what is a copy of the old folder's, and what was only half copied.
Status RemoveCopies(const MoveNote& note, const Heartbeat& heartbeat = {});
/// Folders and files of an archive that are still there, as somebody changed or added something.
std::vector<Path> WhatStayed(const Path& folder);

} // namespace kestrova
