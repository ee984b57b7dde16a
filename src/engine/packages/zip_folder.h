#pragma once

#include "tools/run_to_end.h"

namespace kestrova
{

/// Packs the files of `folder`, its sub-folders left out, flat and with maximal compression into
/// `zip`, whose name has an ending. An existing file of that name goes first. Done when the zip is
/// there.
Status ZipFolder(const Tools& tools, const Path& zip, const Path& folder,
                 const ToolProgressState& state);

/// The same in place of a zip that may be there: that one is whole until the new one is, whose name
/// and rights it takes, and stays as it was when anything fails. Names in the zip say that they are
/// UTF-8. `target` is resolved by the caller.
Status ReplaceZip(const Tools& tools, const Path& target, const Path& folder,
                  const ToolProgressState& state);

} // namespace kestrova
