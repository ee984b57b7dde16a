#pragma once

#include "session/host.h"

namespace kestrova
{

/// To be called when a step is over: its label and its bar are nothing to look at any more.
inline void ClearProgress(ProgressScope& progress)
{
    progress.SetLabel({});
    progress.SetBar(0, 0);
}

} // namespace kestrova
