#pragma once

#include "session/host.h"
#include "tools/tool_run.h"

/// Outside programs run to their ends, while the window lives on through the progress scope: the
/// four ways to run one, and the loop below them for several at once.
namespace kestrova
{

/// Who watches a run.
struct ToolProgressState {
    explicit ToolProgressState(ProgressScope* scope = nullptr) : progress(scope) {}

    ProgressScope* progress; ///< its label and bar follow the tool; its Stop ends it
    bool quiet = false;      ///< the label is neither written nor emptied; the bar still
    /// Says what the person has to know at once.
    std::function<void(const std::string& text)> tell{};
};

/// A started run in the loop, and who hears of it.
struct WatchedRun {
    ToolRun& run;
    ProgressScope* progress = nullptr; ///< as in the state
    bool quiet = false;
    std::function<void(const std::string& text)> tell{};
    std::function<std::string()> watch{}; ///< as in the work
};

/// Until all of them are gone. Each parser moves its bar and each label shows the last line; a
/// Stop, or words of a watch, end one run, and the others go on. A program that has been silent for
/// some time can be stopped even where the work cannot. Each scope is stepped at least every 50 ms.
void RunToEnds(std::span<const WatchedRun> runs);

/// Runs a tool and reads its lines as they come. A tool that has been silent for as long as its row
/// allows is stopped. Done when the tool ended by itself and its row takes that end for work done.
/// `report` is new in any case, and holds the answer too.
Status RunTool(const Tools& tools, const ToolWork& work, const ToolProgressState& state,
               ToolReport& report);

/// Runs a tool with a time limit and takes all that it wrote to its standard output, LF as line
/// ends where it wrote no CRLF counted as CRLF.
Status RunToolBatch(const Tools& tools, const Tool& tool, const ToolArguments& arguments,
                    std::chrono::milliseconds limit, const ToolProgressState& state,
                    ToolReport& report);

/// Runs any program in its own folder, a Windows program through Wine, without a limit. Done when
/// it was started and nobody stopped it, however it ended; `report.end` tells that.
Status RunAndWait(const Tools& tools, const Path& program, const ToolArguments& arguments,
                  const ToolProgressState& state, ToolReport& report);

/// The same for a command line that the system's shell reads, in the program's folder.
Status ShellAndWait(const Tools& tools, const std::string& commandLine,
                    const ToolProgressState& state, ToolReport& report);

/// The bar shows the whole percent of `value` in `total`, a value beyond it counted as all.
void SetProgressPercent(ProgressScope* progress, std::uint64_t total, std::uint64_t value);

/// Label and bar as before a run.
void ClearToolProgress(const ToolProgressState& state);

} // namespace kestrova
