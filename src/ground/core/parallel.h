#pragma once

#include "core/files.h"

#include <cstddef>
#include <functional>

namespace kestrova
{

/// Runs `job(0)` to `job(count - 1)` on all cores. The calling thread waits in slices of 30 ms and
/// calls `heartbeat` between them; when that answers False no further job is begun. All threads
/// have joined when it answers: True when every job ran. Jobs must not throw.
bool RunOnAllCores(std::size_t count, const std::function<void(std::size_t)>& job,
                   const Heartbeat& heartbeat = {});

} // namespace kestrova
