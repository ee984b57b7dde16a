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

/// What a started program is to this one.
enum class Bond {
    EndsWithParent, ///< it is asked to end when this program does, however that comes about
    GoesOn,         ///< it outlives this program, which waits for it at some time
    None            ///< it is the system's: this program never waits for it
};

/// Starts a program in a session of its own: no terminal, a process group of the same number as
/// its process (not without a bond), no other open file of this program. The error is that of the
/// start itself; `pid` is 0 then, and without a bond.
std::error_code Spawn(const Launch& launch, const SpawnStreams& streams, Bond bond, pid_t& pid);

} // namespace kestrova::platform
