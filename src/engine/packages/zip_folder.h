#pragma once

#include "tools/run_to_end.h"

namespace kestrova
{

/// Packs the files of `folder`, its sub-folders left out, flat and with maximal compression into
/// `zip`, whose name has an ending. An existing file of that name goes first. Done when the zip is
/// there.
Status ZipFolder(const Tools& tools, const Path& zip, const Path& folder,
                 const ToolProgressState& state);

} // namespace kestrova
