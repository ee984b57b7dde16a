#include "tools/bounded_run.h"

#include "core/text.h"
#include "platform/places.h"
#include "platform/process_mark.h"
#include "tools/file_names.h"
#include "tools/program_launch.h"
#include "tools/run_to_end.h"
#include "tools/wine_server.h"
#include "words/common.h"
#include "words/tools.h"

#include <algorithm>
#include <thread>

namespace kestrova
{

namespace
{

using std::chrono::milliseconds;
using BoundedClock = std::chrono::steady_clock;

constexpr milliseconds lookAgain{30};
/// A look through all processes, or at the disk, costs some milliseconds.
constexpr milliseconds seldom{300};

/// Answers why the room on a disk is no longer enough, in words; looks now and then only.
class RoomWatch
{
public:
    RoomWatch(Machine& machine, const BoundedWork& work, const Path& folder, std::string name)
        : machine_(machine), bounds_(work.bounds), name_(std::move(name))
    {
        Add(folder);
        if (work.enclosure)
            for (const Path& place : work.enclosure->writable)
                Add(place);
    }

    std::string operator()()
    {
        const auto now = BoundedClock::now();
        if (now - last_ < seldom)
            return {};
        last_ = now;
        for (const auto& [folder, atFirst] : places_) {
            const auto free = machine_.FreeSpace(folder);
            if (!free || *free >= atFirst)
                continue;
            if (*free < bounds_.leastFree || atFirst - *free > bounds_.mostTaken)
                return GetMsg(Msg::ToolTookTheDisk, {name_});
        }
        return {};
    }

private:
    void Add(const Path& folder)
    {
        places_.emplace_back(folder, machine_.FreeSpace(folder).ValueOr(0));
    }

    Machine& machine_;
    RunBounds bounds_;
    std::string name_;
    std::vector<std::pair<Path, std::uint64_t>> places_; ///< with the room at first
    BoundedClock::time_point last_{};
};

enum class WineHelpers { Count, PassedOver };

/// Of one run, or of all those for one folder.
struct MarkedRuns {
    std::string variable;
    std::string value;
};

MarkedRuns RunOf(const std::string& mark)
{
    return {std::string{OnDisk::RunMarkVariable}, mark};
}

MarkedRuns RunsFor(const Tools& tools)
{
    auto [variable, value] = OwnerMark(tools);
    return {std::move(variable), std::move(value)};
}

/// What the program started and nobody waits for.
std::vector<platform::RunningProgram> LeftBehind(const MarkedRuns& runs,
                                                 WineHelpers which = WineHelpers::PassedOver)
{
    auto programs = platform::ProcessesMarked(runs.variable, runs.value);
    if (which == WineHelpers::Count)
        return programs;
    const std::vector<std::string> helpers = Split(OnDisk::WineHelpers, '|');
    std::erase_if(programs, [&](const platform::RunningProgram& program) {
        return std::find(helpers.begin(), helpers.end(), program.name) != helpers.end();
    });
    return programs;
}

void EndLeftBehind(const MarkedRuns& runs, WineHelpers which)
{
    // Each look may find children that one of the ended had just started.
    constexpr int mostLooks = 50;
    for (int look = 0; look < mostLooks; ++look) {
        const auto programs = LeftBehind(runs, which);
        if (programs.empty())
            return;
        for (const auto& program : programs)
            platform::EndProcess(program.pid);
        std::this_thread::sleep_for(lookAgain);
    }
}

/// Says what is waited for once the program itself has ended; looks now and then only.
class LeftWatch
{
public:
    LeftWatch(MarkedRuns runs, std::string name, ProgressScope& progress)
        : runs_(std::move(runs)), name_(std::move(name)), progress_(progress)
    {
    }

    void operator()()
    {
        const auto now = BoundedClock::now();
        if (now - last_ < seldomer)
            return;
        last_ = now;
        std::string others;
        for (const auto& program : LeftBehind(runs_)) {
            if (program.name == name_.substr(0, longestProcessName))
                return;
            const bool isOurs = program.name == OnDisk::EncloserName ||
                                program.name == Path{OnDisk::SystemShell}.filename();
            if (!isOurs && (others + ' ').find(' ' + program.name + ' ') == std::string::npos)
                others += ' ' + program.name;
        }
        if (!others.empty())
            progress_.SetLabel(GetMsg(Msg::ToolLeftOthers, {name_, others.substr(1)}));
    }

private:
    static constexpr milliseconds seldomer{1000};
    static constexpr std::size_t longestProcessName = 15; ///< the system cuts them

    MarkedRuns runs_;
    std::string name_;
    ProgressScope& progress_;
    BoundedClock::time_point last_ = BoundedClock::now();
};

/// Until nothing is left, or one of the bounds is reached.
void AwaitLeftBehind(const MarkedRuns& runs, BoundedClock::time_point end,
                     BoundedClock::time_point endOfPatience, RoomWatch& room, LeftWatch& left,
                     ProgressScope& progress, ToolReport& report)
{
    while (!LeftBehind(runs).empty() && BoundedClock::now() < endOfPatience) {
        for (const auto next = BoundedClock::now() + seldom; BoundedClock::now() < next;) {
            std::this_thread::sleep_for(lookAgain);
            left();
            if (!progress.Step())
                return report.Fail(ToolTrouble::Stopped, GetMsg(Msg::BreakUser));
        }
        if (BoundedClock::now() >= end)
            return report.Fail(ToolTrouble::TimeOut, GetMsg(Msg::ToolTimeout));
        if (std::string words = room(); !words.empty())
            return report.Fail(ToolTrouble::Refused, std::move(words));
    }
}

void SetPrefix(platform::Launch& launch, const Path& prefix)
{
    if (prefix.empty())
        return;
    std::erase_if(launch.environment,
                  [](const auto& own) { return own.first == OnDisk::WinePrefixVariable; });
    launch.environment.emplace_back(OnDisk::WinePrefixVariable, prefix.native());
}

Path PrefixFor(const BoundedWork& work, const Path& program)
{
    return work.prefix.empty() ? WinePrefixFor(program) : work.prefix;
}

/// Wine works in its folder, which it makes itself where there is none yet.
Enclosure EnclosureOf(const BoundedWork& work, const Path& program)
{
    Enclosure enclosure = *work.enclosure;
    if (!IsWindowsProgram(program))
        return enclosure;
    const Path prefix = PrefixFor(work, program);
    if (!prefix.empty() && MakeFolders(prefix)) // what is wrong with it Wine says
        enclosure.writable.push_back(prefix);
    return enclosure;
}

/// The shell that starts a program inside would take any file for a script.
std::string WhyNotStarted(const Path& program)
{
    return IsWindowsProgram(program) ? std::string{} : NotStartable(program);
}

/// False, with the reason in the report, while another server of Wine has the prefix.
bool IsPrefixFree(const Path& prefix, const ToolOrder& order, ProgressScope& progress,
                  ToolReport& report)
{
    const auto ready = AwaitWineServer(prefix, order.name, progress);
    if (!ready && ready.Error().code == ErrorCode::Stopped)
        report.Fail(ToolTrouble::Stopped, GetMsg(Msg::BreakUser));
    else if (!ready)
        report.Fail(ToolTrouble::NotStarted, order.notStarted, ready.Error().sentence);
    return bool{ready};
}

} // namespace

Status RunBounded(const Tools& tools, Machine& machine, const BoundedWork& work,
                  ProgressScope& progress, ToolReport& report)
{
    report = {};
    const Path program = platform::AbsolutePath(ResolvePath(work.program));
    ToolOrder order;
    order.name = TextOf(program.filename());
    order.notStarted = GetMsg(Msg::ErrorExecutingUtility) + TextOf(program);
    order.limit = work.bounds.time;
    auto launch = LaunchOf(tools, program, work.arguments);
    if (!launch) {
        report.Fail(ToolTrouble::NotStarted, order.notStarted, launch.Error().reason);
        return report.status;
    }
    order.launch = std::move(*launch);
    if (!work.folder.empty())
        order.launch.folder = work.folder;
    if (IsWindowsProgram(program))
        SetPrefix(order.launch, work.prefix);
    const Path encloser = work.enclosure ? EncloserOf(tools) : Path{};
    progress.AllowStop();
    if (!encloser.empty()) {
        if (std::string reason = WhyNotStarted(program); !reason.empty()) {
            report.Fail(ToolTrouble::NotStarted, order.notStarted, std::move(reason));
            return report.status;
        }
        if (IsWindowsProgram(program) &&
            !IsPrefixFree(PrefixFor(work, program), order, progress, report))
            return report.status;
        order.launch =
            Enclosed(encloser, tools, order.launch, EnclosureOf(work, program), work.bounds.left);
    }
    const MarkedRuns own = RunOf(platform::FreshRunMark());
    order.launch.environment.emplace_back(own.variable, own.value);
    if (encloser.empty())
        order.launch.environment.push_back(OwnerMark(tools));
    RoomWatch room{machine, work, work.folder.empty() ? program.parent_path() : work.folder,
                   order.name};
    LeftWatch left{own, order.name, progress};
    const auto end = BoundedClock::now() + work.bounds.time;

    ToolRun run{std::move(order)};
    if (run.Start()) {
        const WatchedRun watched{run, &progress, true, {}, [&] { return left(), room(); }};
        RunToEnds({&watched, 1});
    }
    report = run.Report();
    if (!encloser.empty())
        report.end = EndInside(report.end);
    else if (report.status)
        AwaitLeftBehind(own, end, BoundedClock::now() + work.bounds.left, room, left, progress,
                        report);
    // With an enclosure goes all that is in it, which takes a moment.
    EndLeftBehind(own, encloser.empty() ? WineHelpers::PassedOver : WineHelpers::Count);
    return report.status;
}

std::vector<std::string> EndForgottenRuns(const Tools& tools)
{
    const MarkedRuns runs = RunsFor(tools);
    std::vector<std::string> names;
    for (const auto& program : LeftBehind(runs))
        if (std::find(names.begin(), names.end(), program.name) == names.end())
            names.push_back(program.name);
    EndLeftBehind(runs, WineHelpers::PassedOver);
    return names;
}

} // namespace kestrova
