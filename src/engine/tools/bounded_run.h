#pragma once

#include "session/host.h"
#include "session/machine.h"
#include "tools/enclosure.h"
#include "tools/tool_run.h"
#include "tools/wine_paths.h"

/// Somebody else's program, of which nothing is known but where it lies, run within bounds.
namespace kestrova
{

/// What a program may take.
struct RunBounds {
    std::chrono::milliseconds time = std::chrono::minutes{30};
    /// For what it started and did not wait for, once it has ended itself; then that is ended.
    std::chrono::milliseconds left = std::chrono::minutes{10};
    std::uint64_t leastFree = UINT64_C(100) << 20; ///< bytes that its disk keeps free
    std::uint64_t mostTaken = UINT64_C(8) << 30;   ///< bytes that may become used meanwhile
};

struct BoundedWork {
    Path program;
    ToolArguments arguments{};
    Path folder{}; ///< it works here, and the room is measured here; empty: its own
    RunBounds bounds{};
    /// What it may reach, where programs can be enclosed (`EncloserOf`); none: everything.
    std::optional<Enclosure> enclosure{};
    Path prefix{}; ///< of Wine; empty: as the program's place has it
};

/// Runs the program until it and all that it started have ended, in whatever session; helpers of
/// Wine are waited for by nobody. Stop, which is offered at once, and each bound end all of them.
/// Done when it ended by itself, whatever its exit code; `report.end` has that, and what it wrote
/// last. What it writes takes no memory. Room is measured where it may write, too.
Status RunBounded(const Tools& tools, Machine& machine, const BoundedWork& work,
                  ProgressScope& progress, ToolReport& report);

/// Ends what is left of runs for this program's folder whose own program was killed; answers the
/// names. Only for who has that folder to itself: a run under way would end too.
std::vector<std::string> EndForgottenRuns(const Tools& tools);

} // namespace kestrova
