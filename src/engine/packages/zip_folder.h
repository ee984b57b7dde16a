#pragma once

#include "tools/run_to_end.h"

namespace kestrova
{

/// Packs the files of `folder`, its sub-folders left out, flat and with maximal compression into
/// `zip`, whose name has an ending. An existing file of that name goes first. A missing tool is
/// told; any other failure is in the state. True when the zip is there.
bool ZipFolder(const Tools& tools, Host& host, const Path& zip, const Path& folder,
               ToolProgressState& state);

} // namespace kestrova
