#pragma once

#include "archive/level_folders.h"
#include "formats/swap_journal.h"
#include "session/archive.h"
#include "session/folders.h"
#include "session/machine.h"

/// The owner record and the journal as files of the program's folder.
namespace kestrova
{

/// Of a folder that is missing: its path alone.
Result<FolderMark> MarkOf(const Path& folder);
/// True when the folder is the very one that the mark was taken of, wherever it stands now.
Result<bool> HasMark(const Path& folder, const FolderMark& mark);
/// The archive's folder above a level's store (`LEVEL_0001/backup_savegames`).
Path RootOfStore(const Path& store);
/// Hash of the marker's bytes, `absentMarker` without one.
Result<std::string> MarkerHash(const Folders& folders);

/// The owner record, provided that it speaks of this folder with this marker: only then it counts.
/// A failure while that cannot be told; a record that is damaged does not count.
Result<std::optional<OwnerRecord>> ReadOwner(const Folders& folders);
/// The record whatever stands in the Level Editor's folder; none where it is damaged.
Result<std::optional<OwnerRecord>> ReadOwnerAsNoted(const Folders& folders);
/// Notes whose state it is, and that level's own folder and name.
void SetOwner(const Folders& folders, const Archive& archive, OwnerRecord& record,
              const std::optional<LevelPlace>& owner);
/// Fills in folder, marker and boot, and writes; durable when it answers. Nothing is written when
/// the file says the same already.
Status WriteOwner(Machine& machine, const Folders& folders, OwnerRecord record);

Path JournalPath(const Folders& folders);
/// No value when there is none; `Damaged` when there is one that nobody can read.
Result<std::optional<SwapJournal>> ReadJournal(const Folders& folders);
Status WriteJournal(const Folders& folders, const SwapJournal& journal);
Status DropJournal(const Folders& folders);

} // namespace kestrova
