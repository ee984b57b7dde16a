#pragma once

#include "platform/child_process.h"
#include "tools/tool_table.h"
#include "words/message.h"

/// The four ways to run an outside program. Each blocks until the program has ended, while the
/// window lives on through the progress scope; one program runs at a time.
namespace kestrova
{

/// What a run is given and what it leaves. The caller fills the first two before a run.
struct ToolProgressState {
    ProgressScope* progress = nullptr; ///< its label and bar follow the tool; its Stop ends it
    bool quiet = false;                ///< the label is neither written nor emptied; the bar still

    std::string output;       ///< what the tool printed, line by line, each with CRLF
    std::string error;        ///< why the run failed; empty when it did not
    std::string details;      ///< the tool's last lines, to be shown beside the error
    platform::ChildEnd end{}; ///< how the tool ended; 0 when it was never started
};

struct ToolRun {
    ToolId tool{};
    ToolArguments arguments{};
    /// The row that names the handler of its lines; none: label and bar stay as they are.
    std::optional<Message> handler{};
    std::uint64_t total = 0; ///< what the handler counts up to
    bool wholeLines = true;
    Path folder{};                      ///< working folder; empty: the tool's own
    std::optional<std::string> input{}; ///< what the tool reads; none: it has no standard input
    /// A further reason to stop, asked for in each slice: words, or nothing to go on.
    std::function<std::string()> watch{};
};

/// Runs a tool of the table and reads its lines as they come: the handler moves the bar, the label
/// shows the line, Stop ends the tool. A tool that has been silent for some time can be stopped
/// even where the work cannot, and is stopped when the silence is as long as its row allows. True
/// when the tool ended by itself and its row takes that end for work done.
bool RunTool(Session& session, const ToolRun& run, ToolProgressState& state);

/// Runs a tool of the table with a time limit and takes all that it wrote to its standard output,
/// LF as line ends where it wrote no CRLF counted as CRLF.
bool RunToolBatch(Session& session, ToolId tool, const ToolArguments& arguments,
                  std::chrono::milliseconds limit, ToolProgressState& state);

/// Runs any program in its own folder, a Windows program through Wine, without a limit. True when
/// it was started and nobody stopped it, however it ended; `state.end` tells that.
bool RunAndWait(Session& session, const Path& program, const ToolArguments& arguments,
                ToolProgressState& state);

/// The same for a command line that the system's shell reads, in the program's folder.
bool ShellAndWait(Session& session, const std::string& commandLine, ToolProgressState& state);

/// The bar shows the whole percent of `value` in `total`, a value beyond it counted as all.
void SetProgressPercent(ProgressScope* progress, std::uint64_t total, std::uint64_t value);

/// Label and bar as before a run.
void ClearToolProgress(const ToolProgressState& state);

} // namespace kestrova
