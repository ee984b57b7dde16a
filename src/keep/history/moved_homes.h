#pragma once

#include "formats/change_note.h"
#include "session/archive.h"
#include "session/folders.h"

namespace kestrova
{

/// The levels of the folder `from` lie in `to` now. What this program notes of them follows, so
/// that the level that stands in the Level Editor's folder finds its store, a kept file its level,
/// and a change its way back: the owner record, the history, the entries of undoing. Repeatable;
/// durable when it answers.
Status FollowMovedHomes(const Folders& folders, const Path& from, const Path& to);

/// What is noted of a level follows it under the number that the change `back` brings it back by,
/// where it had another one: its entry in `library.json`, its kept files (which get new ids), and
/// what was done to it before it was removed. Nothing to do for any other change. Repeatable.
Status FollowNewNumber(const Folders& folders, const Archive& archive, const Change& back);

} // namespace kestrova
