#include "tools/bounded_run.h"

#include "core/text.h"
#include "platform/places.h"
#include "platform/process_mark.h"
#include "tools/file_names.h"
#include "tools/program_launch.h"
#include "tools/run_to_end.h"
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

/// Answers why the disk's room is no longer enough, in words; looks now and then only.
class RoomWatch
{
public:
    RoomWatch(Machine& machine, Path folder, RunBounds bounds, std::string name)
        : machine_(machine), folder_(std::move(folder)), bounds_(bounds), name_(std::move(name)),
          free_(machine_.FreeSpace(folder_).ValueOr(0))
    {
    }

    std::string operator()()
    {
        const auto now = BoundedClock::now();
        if (now - last_ < seldom)
            return {};
        last_ = now;
        const auto free = machine_.FreeSpace(folder_);
        if (!free || *free >= free_)
            return {};
        const bool fine = *free >= bounds_.leastFree && free_ - *free <= bounds_.mostTaken;
        return fine ? std::string{} : GetMsg(Msg::ToolTookTheDisk, {name_});
    }

private:
    Machine& machine_;
    Path folder_;
    RunBounds bounds_;
    std::string name_;
    std::uint64_t free_;
    BoundedClock::time_point last_{};
};

/// What the program started and nobody waits for, but Wine's own.
std::vector<platform::RunningProgram> LeftBehind(const std::string& mark)
{
    auto programs = platform::ProcessesMarked(std::string{OnDisk::RunMarkVariable}, mark);
    const std::vector<std::string> helpers = Split(OnDisk::WineHelpers, '|');
    std::erase_if(programs, [&](const platform::RunningProgram& program) {
        return std::find(helpers.begin(), helpers.end(), program.name) != helpers.end();
    });
    return programs;
}

void EndLeftBehind(const std::string& mark)
{
    // Each look may find children that one of the ended had just started.
    constexpr int mostLooks = 50;
    for (int look = 0; look < mostLooks; ++look) {
        const auto programs = LeftBehind(mark);
        if (programs.empty())
            return;
        for (const auto& program : programs)
            platform::EndProcess(program.pid);
        std::this_thread::sleep_for(lookAgain);
    }
}

/// Until nothing is left, or one of the bounds is reached.
void AwaitLeftBehind(const std::string& mark, BoundedClock::time_point end, RoomWatch& room,
                     ProgressScope& progress, ToolReport& report)
{
    while (!LeftBehind(mark).empty()) {
        for (const auto next = BoundedClock::now() + seldom; BoundedClock::now() < next;) {
            std::this_thread::sleep_for(lookAgain);
            if (!progress.Step())
                return report.Fail(ToolTrouble::Stopped, GetMsg(Msg::BreakUser));
        }
        if (BoundedClock::now() >= end)
            return report.Fail(ToolTrouble::TimeOut, GetMsg(Msg::ToolTimeout));
        if (std::string words = room(); !words.empty())
            return report.Fail(ToolTrouble::Refused, std::move(words));
    }
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
    const std::string mark = platform::FreshRunMark();
    order.launch.environment.emplace_back(OnDisk::RunMarkVariable, mark);
    RoomWatch room{machine, order.launch.folder, work.bounds, order.name};
    const auto end = BoundedClock::now() + work.bounds.time;

    ToolRun run{std::move(order)};
    progress.AllowStop();
    if (run.Start()) {
        const WatchedRun watched{run, &progress, true, {}, [&] { return room(); }};
        RunToEnds({&watched, 1});
    }
    report = run.Report();
    if (report.status)
        AwaitLeftBehind(mark, end, room, progress, report);
    EndLeftBehind(mark);
    return report.status;
}

} // namespace kestrova
