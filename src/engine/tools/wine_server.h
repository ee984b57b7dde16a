#pragma once

#include "session/host.h"

#include <chrono>

/// Wine's server, which every program in one prefix talks to, and which has the registry in memory.
namespace kestrova
{

/// One is at work for the prefix, seen by all programs of this user.
bool WineServerRuns(const Path& prefix);

/// A program that is shut in gets a server of its own. Beside another one on the same prefix it
/// would not know of fresh keys of the registry, and whichever ends last writes over what the other
/// wrote down. So the other's end is awaited, which comes some seconds after its last program's.
/// `Refused`, in words, when it does not come; `Stopped` by the progress.
Status AwaitWineServer(const Path& prefix, const std::string& program, ProgressScope& progress,
                       std::chrono::milliseconds longest = std::chrono::seconds{20});

} // namespace kestrova
