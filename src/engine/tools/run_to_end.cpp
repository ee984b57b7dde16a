#include "tools/run_to_end.h"

#include "core/text.h"
#include "platform/places.h"
#include "session/cleared_progress.h"
#include "tools/program_launch.h"
#include "tools/tool_output.h"
#include "words/common.h"
#include "words/tools.h"

#include <algorithm>

namespace kestrova
{

namespace
{

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

/// After so long without a word a tool may hang, so the person gets a Stop.
constexpr std::chrono::seconds quietFor{20};

/// What came of one run, shown. False once it is gone.
bool PollAndShow(const WatchedRun& watched)
{
    ProgressScope* const progress = watched.progress;
    const bool sawZero = watched.run.SawZero();
    const bool goes = watched.run.Poll([&](std::string_view line, const LineAnswer& answer) {
        if (answer.done)
            SetProgressPercent(progress, answer.total, *answer.done);
        if (progress != nullptr && !watched.quiet)
            progress->SetLabel(ShownLine(line));
    });
    // Once a run: a tool that writes binary would have the person press OK a thousand times.
    if (watched.run.SawZero() && !sawZero && watched.tell)
        watched.tell(GetMsg(Msg::ByteOfValueZero));
    return goes;
}

/// Keeps the window alive, and hears what it and the watch say.
void Hear(const WatchedRun& watched)
{
    ProgressScope* const progress = watched.progress;
    if (progress != nullptr && watched.run.SilentFor() >= quietFor)
        progress->AllowStop();
    if (progress != nullptr && !progress->Step())
        watched.run.Stop(ToolTrouble::Stopped, GetMsg(Msg::BreakUser));
    if (watched.run.IsEnding() || !watched.watch)
        return;
    if (std::string words = watched.watch(); !words.empty())
        watched.run.Stop(ToolTrouble::Refused, std::move(words));
}

/// Starts what the order says and runs it to its end.
Status RunOrder(ToolOrder order, const std::function<std::string()>& watch,
                const ToolProgressState& state, ToolReport& report)
{
    ToolRun run{std::move(order)};
    if (run.Start()) {
        if (run.HasParser())
            ClearToolProgress(state);
        const WatchedRun watched{run, state.progress, state.quiet, state.tell, watch};
        RunToEnds({&watched, 1});
    }
    report = run.Report();
    return report.status;
}

/// The order for a tool; `missing` is said of one that is not there.
Result<ToolOrder> OrderInWords(const Tools& tools, const ToolWork& work, Message missing,
                               ToolReport& report)
{
    report = {};
    auto order = OrderOf(tools, work);
    if (order)
        return order;
    const Failure& failure = order.Error();
    const bool isMissing = failure.code == ErrorCode::Missing;
    report.Fail(isMissing ? ToolTrouble::Missing : ToolTrouble::NotStarted,
                isMissing ? GetMsg(missing, {failure.subject})
                          : GetMsg(Msg::ErrorExecutingUtility) + failure.subject,
                failure.reason);
    return report.status.Error();
}

} // namespace

void RunToEnds(std::span<const WatchedRun> runs)
{
    std::vector<const ToolRun*> all;
    all.reserve(runs.size());
    for (const WatchedRun& watched : runs)
        all.push_back(&watched.run);
    Clock::time_point lastStep = Clock::now();
    for (bool anyGoes = true; anyGoes;) {
        ToolRun::WaitForAny(all, ToolRun::slice);
        anyGoes = false;
        for (const WatchedRun& watched : runs)
            anyGoes = PollAndShow(watched) || anyGoes;
        if (const Clock::time_point now = Clock::now(); now - lastStep >= ToolRun::slice) {
            lastStep = now;
            for (const WatchedRun& watched : runs)
                if (watched.run.IsRunning())
                    Hear(watched);
        }
    }
}

Status RunTool(const Tools& tools, const ToolWork& work, const ToolProgressState& state,
               ToolReport& report)
{
    auto order = OrderInWords(tools, work, Msg::UtilityMissing, report);
    return order ? RunOrder(std::move(*order), work.watch, state, report) : order.Error();
}

Status RunToolBatch(const Tools& tools, const Tool& tool, const ToolArguments& arguments,
                    milliseconds limit, const ToolProgressState& state, ToolReport& report)
{
    auto order = OrderInWords(tools, {tool, arguments}, Msg::MissingUtility, report);
    if (!order)
        return order.Error();
    order->notStarted = GetMsg(Msg::ErrorLaunchingShell);
    order->output = ToolOrder::Output::Whole;
    order->limit = limit;
    order->silence.reset();
    return RunOrder(std::move(*order), {}, state, report);
}

Status RunAndWait(const Tools& tools, const Path& program, const ToolArguments& arguments,
                  const ToolProgressState& state, ToolReport& report)
{
    report = {};
    const Path place = platform::AbsolutePath(ResolvePath(program));
    ToolOrder order;
    order.name = TextOf(place.filename());
    order.notStarted = GetMsg(Msg::ErrorExecutingUtility) + TextOf(place);
    auto launch = LaunchOf(tools, place, arguments);
    if (!launch) {
        report.Fail(ToolTrouble::NotStarted, order.notStarted, launch.Error().reason);
        return report.status;
    }
    order.launch = std::move(*launch);
    return RunOrder(std::move(order), {}, state, report);
}

Status ShellAndWait(const Tools& tools, const std::string& commandLine,
                    const ToolProgressState& state, ToolReport& report)
{
    ToolOrder order;
    order.launch = {{"/bin/sh", "-c", commandLine}, tools.programFolder, {}};
    order.name = commandLine;
    order.notStarted = GetMsg(Msg::ErrorLaunchingShell);
    return RunOrder(std::move(order), {}, state, report);
}

void SetProgressPercent(ProgressScope* progress, std::uint64_t total, std::uint64_t value)
{
    constexpr std::uint64_t all = 100;
    total = std::max<std::uint64_t>(total, 1);
    value = std::min(value, total);
    const double percent = static_cast<double>(value) / static_cast<double>(total) * all;
    if (progress != nullptr)
        progress->SetBar(static_cast<std::uint64_t>(percent), all);
}

void ClearToolProgress(const ToolProgressState& state)
{
    if (state.progress == nullptr)
        return;
    if (state.quiet)
        state.progress->SetBar(0, 0);
    else
        ClearProgress(*state.progress);
}

} // namespace kestrova
