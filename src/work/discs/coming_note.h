#pragma once

#include "discs/disc_plan.h"
#include "discs/disc_set.h"

namespace kestrova
{

/// The note that goes onto the first disc of a set, so that whoever installs from the set can
/// compare it: `earlier` discs, whose images are not told, and those of the plan with what each
/// level holds now. Nothing of it was proved yet. Reads every file once; the bar follows.
Result<DiscNote> NoteOfComing(const DiscParts& parts, const DiscPlan& plan, DiscNote earlier);
/// False when the level was announced with other files than those that were compared.
bool IsAsAnnounced(const DiscNote& announced, std::int32_t disc, const NotedLevel& compared);

} // namespace kestrova
