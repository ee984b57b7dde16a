#pragma once

#include "core/files.h"

namespace kestrova
{

/// A place for work is free afterwards, whatever a package or a killed program left there. What
/// cannot be removed is renamed to a name beside it that no listing shows, so that it holds up
/// nothing; it is tried again with the leftovers of killed programs (`core/leftovers.h`). Only a
/// failure of that too is one.
Status ClearPlace(const Path& place, const Heartbeat& heartbeat = {});

/// A free name in `folder` for a folder to work in, one that no listing shows.
Path FreshPlaceIn(const Path& folder);

/// The folder with all that is in it. Links are unlinked, never entered.
Status RemoveTree(const Path& folder, const Heartbeat& heartbeat = {});

} // namespace kestrova
