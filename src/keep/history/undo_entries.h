#pragma once

#include "formats/change_note.h"
#include "session/folders.h"
#include "session/settings.h"

/// Changes that can be undone, or done again: `history/undo/NUMBER.json` of the program's folder,
/// the note that the change had while it was made. Contents that went lie by hash in the folder
/// that it names, a folder that was set aside where the change moved it to.
namespace kestrova
{

/// Oldest first; what cannot be read is passed over. An entry that another one did or undid is none
/// any more.
Result<std::vector<Change>> ReadUndoEntries(const Folders& folders);
/// A number above all others.
std::int32_t NextUndoId(const Folders& folders);
/// The file of an entry.
Path UndoEntryFile(const Folders& folders, std::int32_t id);
/// The folder for contents that go with an entry: of the player's files, or beside a level's own.
Path UndoContents(const Folders& folders, std::int32_t id);
Path UndoContentsOfLevel(const Path& home, std::int32_t id);
/// Contents of that folder, and it itself where nothing else lies in it, are gone.
void ClearUndoContents(const Path& kept);
/// What an entry takes on the disk.
std::uint64_t BytesOf(const Change& entry);

/// Gone with all that it kept. What the player made in a folder that was set aside must be in the
/// history. What stays is tried again with the next entry.
void DropUndoEntry(const Folders& folders, const Change& entry);
/// The same of an entry that was undone or done again: a folder that it moved is in use.
void DropUsedEntry(const Folders& folders, const Change& entry);
/// Takes the oldest entries away until the bounds of the settings hold.
void BoundUndo(const Folders& folders, const ProgramSettings& settings);
/// True when the settings leave room for a change that keeps so many bytes.
bool HasUndoRoom(const ProgramSettings& settings, std::uint64_t bytes);

} // namespace kestrova
