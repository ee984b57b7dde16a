#pragma once

#include "formats/import_note.h"
#include "levels/undo_change.h"

#include <variant>

/// What can be undone or done again, of whichever kind: changes of levels, and imports of wads. One
/// row of numbers counts both.
namespace kestrova
{

using Undoable = std::variant<ChangeHead, ImportNote>;

std::int32_t NumberOf(const Undoable& one);
bool IsUndone(const Undoable& one);
/// In words that go on behind "Undo".
std::string WhatWasDone(const Undoable& one);

/// The newest one of this archive, or of this Level Editor's folder, that can be taken that way, of
/// those below the number `before`; none without one, or while the entries cannot be read.
std::optional<Undoable> NextUndoable(const Folders& folders, const Archive& archive, UndoWay way,
                                     std::int32_t before = undoIdLimit);
/// The same, wherever it was made.
std::optional<Undoable> NewestUndoable(const Folders& folders, UndoWay way);
/// All of them, newest first.
Result<std::vector<Undoable>> AllUndoable(const Folders& folders, std::vector<Path>& unread);

} // namespace kestrova
