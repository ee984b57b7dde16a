#include "tools/tool_run.h"

#include "core/size_words.h"
#include "core/text.h"
#include "tools/program_launch.h"
#include "tools/tool_output.h"
#include "words/common.h"
#include "words/tools.h"

namespace kestrova
{

namespace
{

using std::chrono::milliseconds;

/// A tool that was asked to end has so long to put its files away.
constexpr milliseconds graceToEnd{400};
/// Enough for the last lines.
constexpr std::size_t tailSize = 8192;

ErrorCode CodeOf(ToolTrouble trouble)
{
    switch (trouble) {
    case ToolTrouble::Missing:
        return ErrorCode::Missing;
    case ToolTrouble::NotStarted:
        return ErrorCode::CannotOpen;
    case ToolTrouble::Stopped:
        return ErrorCode::Stopped;
    case ToolTrouble::Refused:
        return ErrorCode::Refused;
    default:
        return ErrorCode::NotDone;
    }
}

} // namespace

void ToolReport::Fail(ToolTrouble why, std::string sentence, std::string reason)
{
    trouble = why;
    status = Failure{CodeOf(why), {}, std::move(reason), lastLines, std::move(sentence)};
}

Result<ToolOrder> OrderOf(const Tools& tools, const ToolWork& work)
{
    const Path program = FindTool(tools, work.tool);
    if (program.empty())
        return Failure{ErrorCode::Missing, TextOf(tools.programFolder / work.tool.name),
                       InstallHint(tools, work.tool)};
    auto launch = LaunchOf(tools, program, work.arguments);
    if (!launch)
        return launch.Error();
    ToolOrder order;
    order.launch = std::move(*launch);
    for (const auto& variable : work.tool.environment)
        order.launch.environment.push_back(variable);
    if (!work.folder.empty())
        order.launch.folder = work.folder;
    order.name = work.tool.name;
    order.notStarted = GetMsg(Msg::ErrorCreatingSubprocess,
                              {TextOf(program), lineBreak, Join(work.arguments, " ")});
    order.tool = &work.tool;
    order.output = ToolOrder::Output::Lines;
    order.input = work.input;
    order.parser = work.parser ? work.parser() : nullptr;
    order.wholeLines = work.wholeLines;
    order.lineLimit = work.tool.lineLimit;
    order.silence = work.tool.silence;
    return order;
}

ToolRun::ToolRun(ToolOrder order)
    : order_(std::move(order)), splitter_(order_.wholeLines, order_.lineLimit)
{
}

Status ToolRun::Start()
{
    const bool joined = order_.output != ToolOrder::Output::Whole;
    if (const auto failure = child_.Start(order_.launch, {order_.input, joined})) {
        report_.Fail(ToolTrouble::NotStarted, order_.notStarted, failure.message());
        return report_.status;
    }
    phase_ = Phase::Running;
    start_ = lastWord_ = Clock::now();
    return {};
}

bool ToolRun::Poll(const LineShower& show)
{
    if (!IsRunning())
        return false;
    std::string output;
    std::string errors;
    const bool goes = child_.Read(milliseconds{0}, output, errors);
    const Clock::time_point now = Clock::now();
    if (phase_ == Phase::Ending)
        return goes && now < force_ ? true : End();
    if (!output.empty() || !errors.empty())
        lastWord_ = now;
    KeepTail(output);
    KeepTail(errors);
    Take(output, show);
    if (!goes)
        return End();
    LookAtLimits(now);
    return true;
}

void ToolRun::Stop(ToolTrouble why, std::string words)
{
    if (phase_ != Phase::Running)
        return;
    report_.Fail(why, std::move(words));
    phase_ = Phase::Ending;
    force_ = Clock::now() + graceToEnd;
    child_.Terminate();
}

milliseconds ToolRun::SilentFor() const
{
    return std::chrono::duration_cast<milliseconds>(Clock::now() - lastWord_);
}

void ToolRun::WaitForAny(std::span<const ToolRun* const> runs, milliseconds most)
{
    std::vector<const platform::ChildProcess*> children;
    children.reserve(runs.size());
    for (const ToolRun* const run : runs)
        children.push_back(&run->child_);
    platform::ChildProcess::WaitForAny(children, most);
}

void ToolRun::KeepTail(std::string_view bytes)
{
    tail_ += bytes.substr(bytes.size() > tailSize ? bytes.size() - tailSize : 0);
    if (tail_.size() > 2 * tailSize)
        tail_.erase(0, tail_.size() - tailSize);
}

void ToolRun::Take(std::string_view output, const LineShower& show)
{
    switch (order_.output) {
    case ToolOrder::Output::Dropped:
        return;
    case ToolOrder::Output::Whole:
        report_.output += output;
        if (report_.output.size() > order_.mostOutput)
            Stop(ToolTrouble::Flood,
                 GetMsg(Msg::ToolTooMuchOutput,
                        {order_.name, SizeInWords(static_cast<double>(order_.mostOutput))}));
        return;
    case ToolOrder::Output::Lines:
        break;
    }
    const auto end =
        splitter_.Feed(output, [&](std::string_view line) { return TakeLine(line, show); });
    if (end == LineSplitter::State::TooLong)
        Stop(ToolTrouble::Flood,
             GetMsg(Msg::ToolLineTooLong, {order_.name, std::to_string(order_.lineLimit)}));
    else if (end == LineSplitter::State::Stopped)
        Stop(ToolTrouble::Stopped, GetMsg(Msg::BreakUser));
}

bool ToolRun::TakeLine(std::string_view line, const LineShower& show)
{
    if (order_.parser == nullptr)
        return true;
    const LineAnswer answer = order_.parser->Feed(line);
    if (show)
        show(line, answer);
    return answer.goOn || (order_.tool != nullptr && order_.tool->outlivesParser);
}

void ToolRun::LookAtLimits(Clock::time_point now)
{
    if ((order_.limit && now - start_ >= *order_.limit) ||
        (order_.silence && now - lastWord_ >= *order_.silence))
        Stop(ToolTrouble::TimeOut, GetMsg(Msg::ToolTimeout));
}

/// The child has ended, or is made to. Answers False.
bool ToolRun::End()
{
    if (phase_ == Phase::Ending)
        child_.Kill();
    phase_ = Phase::Gone;
    report_.end = child_.Finish();
    report_.lastLines = LastLines(tail_);
    if (!report_.status)
        report_.Fail(report_.trouble, report_.status.Error().sentence);
    if (order_.output == ToolOrder::Output::Lines)
        report_.output = splitter_.Output();
    else if (report_.output.find(lineBreak) == std::string::npos)
        report_.output = ReplaceAll(std::move(report_.output), "\n", lineBreak);
    if (report_.trouble == ToolTrouble::None && order_.tool != nullptr)
        Judge();
    return false;
}

void ToolRun::Judge()
{
    const platform::ChildEnd& end = report_.end;
    const std::string& name = order_.name;
    if (end.signal != 0)
        report_.Fail(ToolTrouble::Signal,
                     GetMsg(Msg::ToolEndedBySignal, {name, std::to_string(end.signal)}));
    else if (end.code > order_.tool->worstSuccess)
        report_.Fail(ToolTrouble::ExitCode,
                     GetMsg(Msg::ToolEndedWithCode, {name, std::to_string(end.code)}));
    else if (const std::string complaint = ComplaintIn(*order_.tool, report_.output);
             !complaint.empty())
        report_.Fail(ToolTrouble::LeftOut, GetMsg(Msg::ToolLeftOut, {name}), ShownLine(complaint));
    else if (order_.output == ToolOrder::Output::Whole && report_.output.empty())
        report_.Fail(ToolTrouble::NoOutput, GetMsg(Msg::NoTextOnOutput));
}

} // namespace kestrova
