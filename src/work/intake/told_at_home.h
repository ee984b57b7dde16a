#pragma once

#include "session/host.h"

namespace kestrova
{

/// Tells what changed below the person's home since that time, outside these folders: by a program
/// that nothing shut in, or by another one.
void TellChangedAtHome(Host& host, ProgressScope& progress, std::int64_t sinceNs,
                       std::vector<Path> passedOver);

} // namespace kestrova
