#pragma once

#include "tools/bounded_run.h"

namespace kestrova
{

/// One tom file, in the Level Editor's folder in which its wads lie.
struct TomRun {
    Path compiler;
    Path trle;
    Path tom;
    Path result; ///< `data/NAME.tr4` of that folder
    RunBounds bounds{};
};

/// What the compiler left empty is no result.
Result<bool> IsCompiled(const Path& result);

/// An older result goes, the compiler runs, and the result is there afterwards. A failure leaves
/// none, since it may be half of one; what the compiler wrote last is in the report.
Status CompileOneTom(const Tools& tools, Machine& machine, const TomRun& run,
                     ProgressScope& progress, ToolReport& report);

} // namespace kestrova
