#pragma once

#include "session/session.h"
#include "swap/swap_records.h"

namespace kestrova
{

/// The critical part of a full restore, from the point that the journal notes: deletes what no
/// original may stand beside, copies the originals back, writes the owner, drops the journal. May
/// be repeated. `progress` may be null.
Status FinishRestore(Session& session, const SwapJournal& journal,
                     ProgressScope* progress = nullptr);

} // namespace kestrova
