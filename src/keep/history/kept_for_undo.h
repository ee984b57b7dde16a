#pragma once

#include "history/change_targets.h"
#include "session/folders.h"

namespace kestrova
{

/// The player's file that goes, by its hash in the folder of the change's entry, so that the change
/// can be undone. One content lies on the disk once: it is linked to the history's where that
/// works. A failure leaves the change without a way back, and nothing else.
void KeepForUndo(const Folders& folders, const Change& change, const ChangeTarget& target);

} // namespace kestrova
