#pragma once

#include "core/names.h"
#include "core/result.h"

#include <string>
#include <vector>

/// What the folder of an archive holds, by name.
namespace kestrova
{

/// The names in the folder that belong to the archive, whatever stands behind them: those of
/// levels, on the list or not, and of levels that were set aside, and what the program notes beside
/// them. Other names there are the person's own.
Result<std::vector<std::string>> NamesOfArchive(const Path& folder);

} // namespace kestrova
