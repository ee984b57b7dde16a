#pragma once

#include "formats/change_note.h"
#include "session/folders.h"
#include "session/settings.h"

/// Changes that can be undone, or done again: `history/undo/NUMBER.json` of the program's folder,
/// the note that the change had while it was made. Contents that went lie by hash in a folder of
/// that number, of a level's own files beside them; a folder that was set aside lies where the
/// change moved it to. Where something is kept follows from the entry and is never read from it.
namespace kestrova
{

struct UndoList {
    std::vector<ChangeHead> entries; ///< oldest first
    std::vector<Path> unread;        ///< damaged, or of a form that this program does not know
};
/// What there is to undo, by the first lines. An entry that another one did or undid is none any
/// more.
Result<UndoList> ReadUndoList(const Folders& folders);
/// The newest entry that is wanted; older ones are not read.
std::optional<ChangeHead> NewestUndo(const Folders& folders,
                                     const std::function<bool(const ChangeHead&)>& isWanted);
/// The entry as a whole; `Damaged` when its file is not what it was written as.
Result<Change> ReadUndoEntry(const Folders& folders, std::int32_t id);
/// A number above all others, those of imports of wads too.
std::int32_t NextUndoId(const Folders& folders);
/// The file of an entry.
Path UndoEntryFile(const Folders& folders, std::int32_t id);
/// The folder for contents that go with an entry: of the player's files, or beside a level's own.
Path UndoContents(const Folders& folders, const ChangeHead& entry);
/// Contents of the entry's folder, and it itself where nothing else lies in it, are gone. What
/// another program's folder keeps beside the level stays.
void ClearUndoContents(const Folders& folders, const ChangeHead& entry);
/// What an entry takes on the disk.
std::uint64_t BytesOf(const Folders& folders, const ChangeHead& entry);

/// Tells whether a folder that was set aside is as it was: names, sizes and times.
Result<std::string> DigestOfAside(const Path& folder);

/// Gone with all that it kept. A folder that was set aside stays where somebody put something else
/// into it, and where it is not the one that this program set aside. What stays is tried again with
/// the next entry.
void DropUndoEntry(const Folders& folders, const ChangeHead& entry);
/// The same of an entry that was undone or done again: a folder that it moved is in use.
void DropUsedEntry(const Folders& folders, const ChangeHead& entry);
/// Takes the oldest entries away until the bounds of the settings hold. What was said of levels is
/// counted apart, so that it drives away no change that keeps files.
void BoundUndo(const Folders& folders, const ProgramSettings& settings);
struct UndoRoom {
    std::int32_t count = 0;
    std::uint64_t bytes = 0;
};
/// How many changes can come, and how much can be kept for them, before older ones go. Nothing
/// while the entries cannot be read.
UndoRoom RoomForUndo(const Folders& folders, const ProgramSettings& settings);
/// True when the settings leave room for a change that keeps so many bytes.
bool HasUndoRoom(const ProgramSettings& settings, std::uint64_t bytes);

} // namespace kestrova
