#pragma once

#include "session/host.h"

#include <functional>
#include <vector>

namespace kestrova
{

/// A piece of work on one file, done on any core.
struct FileJob {
    std::uint64_t weight = 0; ///< bytes, for the bar and so that big ones begin first
    std::string label;        ///< shown while it is the latest begun
    std::function<Status()> run;
};

/// Runs all jobs on all cores; `progress`, which may be null, follows. The failure that came first
/// ends it, `Stopped` when the person did; jobs under way are finished in any case.
Status RunFileJobs(std::vector<FileJob> jobs, ProgressScope* progress);

} // namespace kestrova
