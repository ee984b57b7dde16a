#pragma once

#include "discs/disc_set.h"

namespace kestrova
{

/// The sizes of what the choice puts onto the first disc beside the levels; the Level Editor's
/// folder is measured, the bar following. The plan is divided anew.
Status MeasureExtras(const DiscParts& parts, DiscPlan& plan);

/// Makes the discs of the plan, or their images, as the choice stands: the checks, the files of the
/// first disc, each disc with what proves it, and at the end the question whether the levels leave
/// the hard disk. Only then, and only with a Yes, does the archive change: it is saved with the
/// discs' numbers and the mark that the files are to be removed. True when the set was made;
/// whatever went wrong was told, and then all levels are where they were.
bool CreateDiscs(const DiscParts& parts, DiscPlan& plan);

/// The same as a person does it: where the levels leave the hard disk, they do so at once.
bool MakeArchiveDiscs(Session& session, ProgressScope& progress, DiscPlan& plan);

} // namespace kestrova
