#pragma once

#include "platform/process.h"

#include <sys/types.h>

/// The one place where this program forks.
namespace kestrova::platform
{

/// What the child gets as its three streams; -1 is /dev/null.
struct SpawnStreams {
    int input = -1;
    int output = -1;
    int errors = -1;
};

/// Starts a program in a session of its own: no terminal, a process group of the same number as
/// its process, no other open file of this program. `endsWithParent`: it is asked to end when this
/// program does, however that comes about. The error is that of the start itself; `pid` is 0 then.
std::error_code Spawn(const Launch& launch, const SpawnStreams& streams, bool endsWithParent,
                      pid_t& pid);

} // namespace kestrova::platform
