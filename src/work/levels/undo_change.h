#pragma once

#include "formats/change_note.h"
#include "session/session.h"

/// Changes undone, and done again: each is a change itself, so that a killed one is mended, and
/// leads back in its turn.
namespace kestrova
{

enum class UndoWay {
    Undo,
    Redo ///< what was undone is done again
};

/// What a person did, in words that go on behind "Undo".
std::string WhatWasDone(const ChangeHead& entry);
/// The newest change of this archive that can be taken that way, of those below the number
/// `before`; none without one, or while the entries cannot be read.
std::optional<ChangeHead> NextToUndo(const Folders& folders, const Archive& archive, UndoWay way,
                                     std::int32_t before = undoIdLimit);

/// Undoes the change, or does it again when it was undone. Answers the number that the level has
/// now: a removed one comes back under another where a newer level has its own. No value, with
/// words, when something of it has changed since; nothing is changed then, nor when it is stopped,
/// which is not told.
std::optional<LevelCode> UndoChange(Session& session, const Change& change);

} // namespace kestrova
