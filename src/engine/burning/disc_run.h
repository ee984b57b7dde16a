#pragma once

#include "burning/burn_settings.h"
#include "tools/tool_run.h"

#include <memory>

/// The tools of discs run to their ends.
namespace kestrova
{

/// Of a hundred; it never goes back.
std::unique_ptr<LineParser> ImageLines();
/// Megabytes of megabytes.
std::unique_ptr<LineParser> BurnLines();
/// Lines of as many as are expected, 0 when nobody knows.
std::unique_ptr<LineParser> CountedLines(std::uint64_t expected);

/// Runs `shown`, which was started, to its end; label and bar of the settings follow it, and a
/// countdown is not shown. `feeder` writes what it reads: when one of them fails the other is ended
/// too. Stop ends both where the settings allow it, and in any case once the tool says nothing.
void RunDiscTools(ToolRun& shown, ToolRun* feeder, const BurnSettings& settings);

} // namespace kestrova
