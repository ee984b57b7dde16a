#pragma once

#include "history/archive_move.h"
#include "swap/whereabouts.h"

namespace kestrova
{

/// A move of an archive that was killed is ended: the folder that the list names counts, and what
/// belongs to the move in the other one goes. Says which. Without one nothing is done. False, with
/// words, when nobody can tell which counts, or when notes of levels still lead to the old folder:
/// no savegame may be stored then. Repeatable.
bool EndUnfinishedMove(const SwapParts& parts, const Whereabouts& said);

/// The copy of a move that did not come about goes, and its note. Answers what stays in the new
/// folder; a failure leaves the note.
Result<std::vector<Path>> TakeMoveBack(const Folders& folders, FolderLocks& locks,
                                       const MoveNote& note, const Heartbeat& heartbeat);
/// What is left in the old folder of a move whose list is written goes, and the note. Answers what
/// stays there: what somebody changed or added since. A failure to remove something is told; only a
/// Stop, and a note that cannot be dropped, are the answer.
Result<std::vector<Path>> ClearOldFolder(Host& host, const Folders& folders, FolderLocks& locks,
                                         const MoveNote& note, const WholeTree* copied,
                                         const Heartbeat& heartbeat);

} // namespace kestrova
