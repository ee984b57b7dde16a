#pragma once

#include "core/result.h"
#include "session/folders.h"

namespace kestrova
{

/// The levels of the folder `from` lie in `to` now. What this program notes of them follows, so
/// that the level that stands in the Level Editor's folder finds its store, a kept file its level,
/// and a change its way back: the owner record, the history, the entries of undoing. Repeatable;
/// durable when it answers.
Status FollowMovedHomes(const Folders& folders, const Path& from, const Path& to);

} // namespace kestrova
