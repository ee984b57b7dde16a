#pragma once

#include "core/files.h"

namespace kestrova
{

/// Called when a file is in the zip, with the line that the zip program prints for it; False stops.
using ZipLine = std::function<bool(const std::string& line)>;

/// Writes a zip of these files, without their folders, which come in their order while all cores
/// deflate what follows: as dense as the densest level of the zip program, and several times as
/// fast. Names are UTF-8, and say so. False when the files are not of the usual kind (none, or too
/// many, or too large together), or something failed: nothing is left then, and the zip program is
/// to be asked, which has words for it. `Stopped` when `heartbeat` or `added` said so.
Result<bool> WriteZip(const Path& zip, const std::vector<Path>& files, const ZipLine& added,
                      const Heartbeat& heartbeat);

} // namespace kestrova
