#pragma once

#include "packages/package_plan.h"
#include "tools/run_to_end.h"

namespace kestrova
{

/// The entries of a package; 20 seconds at most for a zip, for other kinds one more for each
/// megabyte, since their lists stand among the packed files.
Result<std::vector<PackageEntry>> ListZip(const Tools& tools, const Path& package,
                                          const ToolProgressState& state);

/// The same by a plan: their names as text, in the code page `namesAs` where that is not empty. The
/// page of the names is in the plan then.
Result<std::vector<PackageEntry>> ListEntries(const Tools& tools, PackagePlan& plan,
                                              const Path& package, const std::string& namesAs,
                                              const ToolProgressState& state);

} // namespace kestrova
