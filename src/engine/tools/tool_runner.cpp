#include "tools/tool_runner.h"

#include "platform/places.h"
#include "tools/line_splitter.h"
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

constexpr milliseconds slice{30};
/// A tool that was asked to end has so long to put its files away.
constexpr milliseconds graceToEnd{400};
/// After so long without a word a tool may hang, so the person gets a Stop.
constexpr std::chrono::seconds quietFor{20};
/// A list of a million names with room to spare.
constexpr std::size_t mostBatchOutput = std::size_t{256} << 20;
/// Enough for the last lines.
constexpr std::size_t tailSize = 8192;

/// A child while it runs, whatever the way: slices, steps, stop, silence, limit, last words.
class SlicedRun
{
public:
    SlicedRun(ToolProgressState& state, std::string name) : state_(state), name_(std::move(name)) {}

    std::optional<milliseconds> limit;
    std::optional<milliseconds> silence;
    std::function<std::string()> watch;
    /// Takes what was read; words stop the child.
    std::function<std::string(std::string_view output)> take;

    /// The start's own failure, or nothing.
    std::error_code Start(const platform::Launch& launch, const platform::ChildStreams& streams)
    {
        return child_.Start(launch, streams);
    }

    /// To the child's end. False when it was stopped; `state.error` says why.
    bool ToEnd()
    {
        const Clock::time_point start = Clock::now();
        lastStep_ = lastWord_ = start;
        for (bool goes = true; goes;) {
            std::string output;
            std::string errors;
            goes = child_.Read(slice, output, errors);
            const Clock::time_point now = Clock::now();
            if (!output.empty() || !errors.empty())
                lastWord_ = now;
            Keep(output);
            Keep(errors);
            if (take && state_.error.empty())
                state_.error = take(output);
            if (state_.error.empty() && goes)
                state_.error = ReasonToStop(now, start);
            if (!state_.error.empty()) {
                Stop();
                break;
            }
        }
        state_.end = child_.Finish();
        state_.details = LastLines(tail_);
        return state_.error.empty();
    }

    /// A tool of the table is judged by its row.
    bool Judge(const ToolRow& row)
    {
        if (state_.end.signal != 0)
            state_.error =
                GetMsg(Msg::ToolEndedBySignal, {name_, std::to_string(state_.end.signal)});
        else if (state_.end.code > row.worstSuccess)
            state_.error = GetMsg(Msg::ToolEndedWithCode, {name_, std::to_string(state_.end.code)});
        else if (const std::string complaint = ComplaintIn(row, state_.output);
                 !complaint.empty()) {
            state_.error = GetMsg(Msg::ToolLeftOut, {name_});
            state_.details = ShownLine(complaint);
        }
        return state_.error.empty();
    }

private:
    void Keep(std::string_view bytes)
    {
        tail_ += bytes.substr(bytes.size() > tailSize ? bytes.size() - tailSize : 0);
        if (tail_.size() > 2 * tailSize)
            tail_.erase(0, tail_.size() - tailSize);
    }

    std::string ReasonToStop(Clock::time_point now, Clock::time_point start)
    {
        if (now - lastStep_ >= slice) {
            lastStep_ = now;
            if (state_.progress != nullptr && now - lastWord_ >= quietFor)
                state_.progress->AllowStop();
            if (state_.progress != nullptr && !state_.progress->Step())
                return GetMsg(Msg::BreakUser);
            if (std::string words = watch ? watch() : ""; !words.empty())
                return words;
        }
        if ((limit && now - start >= *limit) || (silence && now - lastWord_ >= *silence))
            return GetMsg(Msg::ToolTimeout);
        return {};
    }

    void Stop()
    {
        child_.Terminate();
        const Clock::time_point end = Clock::now() + graceToEnd;
        std::string dropped;
        while (Clock::now() < end && child_.Read(slice, dropped, dropped)) {
            dropped.clear();
            // Stopped already, so a second Stop changes nothing.
            if (state_.progress != nullptr)
                (void)state_.progress->Step();
        }
        child_.Kill();
    }

    ToolProgressState& state_;
    std::string name_;
    platform::ChildProcess child_;
    std::string tail_;
    Clock::time_point lastStep_;
    Clock::time_point lastWord_;
};

void Empty(ToolProgressState& state)
{
    state.output.clear();
    state.error.clear();
    state.details.clear();
    state.end = {};
}

/// Where the tool is; empty with the words of `missing` in the state when it is not there.
Path ToolOrWords(Session& session, const ToolRow& row, Message missing, ToolProgressState& state)
{
    Path tool = FindTool(session, row);
    if (tool.empty()) {
        const std::string folder = TextOf(session.programFolder);
        state.error = GetMsg(missing, {TextOf(session.programFolder / row.name)});
        state.details = GetMsg(Msg::ToolInstallHint, {row.name, folder, row.package});
    }
    return tool;
}

/// The launch of a tool of the table; its failure is in the state.
std::optional<platform::Launch> ToolLaunch(Session& session, const ToolRow& row, const Path& tool,
                                           const ToolArguments& arguments, ToolProgressState& state)
{
    auto launch = LaunchOf(session, tool, arguments);
    if (!launch) {
        state.error = GetMsg(Msg::ErrorExecutingUtility) + TextOf(tool);
        state.details = launch.Error().reason;
        return {};
    }
    for (const auto& variable : row.environment)
        launch->environment.push_back(variable);
    return *launch;
}

bool FailedStart(ToolProgressState& state, const std::string& words, const std::error_code& failure)
{
    state.error = words;
    state.details = failure.message();
    return false;
}

} // namespace

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
    if (!state.quiet)
        state.progress->SetLabel({});
    state.progress->SetBar(0, 0);
}

bool RunTool(Session& session, const ToolRun& run, ToolProgressState& state)
{
    Empty(state);
    const ToolRow& row = RowOf(run.tool);
    const Path tool = ToolOrWords(session, row, Msg::UtilityMissing, state);
    if (tool.empty())
        return false;
    auto launch = ToolLaunch(session, row, tool, run.arguments, state);
    if (!launch)
        return false;
    if (!run.folder.empty())
        launch->folder = run.folder;

    SlicedRun sliced{state, row.name};
    if (const auto failure = sliced.Start(*launch, {run.input, true}))
        return FailedStart(state,
                           GetMsg(Msg::ErrorCreatingSubprocess,
                                  {TextOf(tool), lineBreak, Join(run.arguments, " ")}),
                           failure);

    const auto handler = run.handler ? MakeLineHandler((*run.handler).text, row.marks) : nullptr;
    if (handler != nullptr)
        ClearToolProgress(state);
    LineSplitter splitter{run.wholeLines, row.lineLimit};
    const auto line = [&](std::string_view text) {
        if (handler == nullptr)
            return true;
        const LineAnswer answer = handler->Feed(text, run.total);
        if (answer.done)
            SetProgressPercent(state.progress, answer.total, *answer.done);
        if (state.progress != nullptr && !state.quiet)
            state.progress->SetLabel(ShownLine(text));
        return answer.goOn || row.ignoresHandlerStop;
    };
    sliced.silence = row.silence;
    sliced.watch = run.watch;
    sliced.take = [&](std::string_view bytes) -> std::string {
        const bool sawZero = splitter.SawZero();
        const LineSplitter::State end = splitter.Feed(bytes, line);
        // Once a run: a tool that writes binary would have the person press OK a thousand times.
        if (splitter.SawZero() && !sawZero)
            session.host.Tell(Tone::Plain, GetMsg(Msg::ByteOfValueZero));
        if (end == LineSplitter::State::TooLong)
            return GetMsg(Msg::ToolLineTooLong, {row.name, std::to_string(row.lineLimit)});
        return end == LineSplitter::State::Stopped ? GetMsg(Msg::BreakUser) : "";
    };
    const bool ended = sliced.ToEnd();
    state.output = splitter.Output();
    return ended && sliced.Judge(row);
}

bool RunToolBatch(Session& session, ToolId tool, const ToolArguments& arguments, milliseconds limit,
                  ToolProgressState& state)
{
    Empty(state);
    const ToolRow& row = RowOf(tool);
    const Path program = ToolOrWords(session, row, Msg::MissingUtility, state);
    if (program.empty())
        return false;
    const auto launch = ToolLaunch(session, row, program, arguments, state);
    if (!launch)
        return false;
    SlicedRun sliced{state, row.name};
    if (const auto failure = sliced.Start(*launch, {{}, false}))
        return FailedStart(state, GetMsg(Msg::ErrorLaunchingShell), failure);
    std::string output;
    sliced.limit = limit;
    sliced.take = [&](std::string_view bytes) -> std::string {
        output += bytes;
        if (output.size() <= mostBatchOutput)
            return {};
        return GetMsg(Msg::ToolTooMuchOutput, {row.name, FormatSize(mostBatchOutput)});
    };
    const bool ended = sliced.ToEnd();
    if (output.find(lineBreak) == std::string::npos)
        output = ReplaceAll(std::move(output), "\n", lineBreak);
    state.output = std::move(output);
    if (!ended || !sliced.Judge(row))
        return false;
    if (state.output.empty())
        state.error = GetMsg(Msg::NoTextOnOutput);
    return state.error.empty();
}

bool RunAndWait(Session& session, const Path& program, const ToolArguments& arguments,
                ToolProgressState& state)
{
    Empty(state);
    const Path place = platform::AbsolutePath(ResolvePath(program));
    const std::string words = GetMsg(Msg::ErrorExecutingUtility) + TextOf(place);
    const auto launch = LaunchOf(session, place, arguments);
    if (!launch) {
        state.error = words;
        state.details = launch.Error().reason;
        return false;
    }
    SlicedRun sliced{state, TextOf(place.filename())};
    if (const auto failure = sliced.Start(*launch, {}))
        return FailedStart(state, words, failure);
    return sliced.ToEnd();
}

bool ShellAndWait(Session& session, const std::string& commandLine, ToolProgressState& state)
{
    Empty(state);
    SlicedRun sliced{state, commandLine};
    if (const auto failure =
            sliced.Start({{"/bin/sh", "-c", commandLine}, session.programFolder, {}}, {}))
        return FailedStart(state, GetMsg(Msg::ErrorLaunchingShell), failure);
    return sliced.ToEnd();
}

} // namespace kestrova
