#pragma once

#include "discs/disc_set.h"

namespace kestrova
{

/// Setup files of Kestrova, found with the person's help: the four that a zip holds or that stand
/// beside the `.cab`, or one package of this system. No value when there are none, which was told.
/// `given`: the file that was chosen already; empty: it is asked for. `temp`: where a zip is
/// unpacked.
std::optional<std::vector<Path>> LocateSetupFiles(const DiscParts& parts, const Path& given,
                                                  const Path& temp);

} // namespace kestrova
