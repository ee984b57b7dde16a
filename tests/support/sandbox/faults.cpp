#include "sandbox/faults.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <mutex>
#include <sys/wait.h>
#include <unistd.h>

namespace kestrova::testing
{

namespace
{

using platform::FileAction;
using platform::Path;

const char* NameOf(FileAction action)
{
    switch (action) {
    case FileAction::Create:
        return "create ";
    case FileAction::Write:
        return "write ";
    case FileAction::Sync:
        return "sync ";
    case FileAction::Rename:
        return "rename to ";
    case FileAction::Exchange:
        return "exchange with ";
    case FileAction::Unlink:
        return "unlink ";
    case FileAction::MakeFolder:
        return "make folder ";
    case FileAction::RemoveFolder:
        return "remove folder ";
    case FileAction::SetMode:
        return "set mode of ";
    case FileAction::SetTimes:
        return "set time of ";
    case FileAction::Truncate:
        return "truncate ";
    case FileAction::List:
        return "list ";
    case FileAction::Open:
        return "open ";
    case FileAction::Read:
        return "read ";
    case FileAction::Look:
        return "look at ";
    }
    return "change ";
}

enum class Counts { Changes, Reads, Looks };

/// Counts the calls; at the n-th, and behind it, `AtCall` decides.
class CountingHook : public platform::FileHook
{
public:
    explicit CountingHook(int n, Counts counts = Counts::Changes) : n_(n), counts_(counts)
    {
        platform::SetFileHook(this);
    }
    ~CountingHook() override { platform::SetFileHook(nullptr); }
    CountingHook(const CountingHook&) = delete;
    CountingHook& operator=(const CountingHook&) = delete;

    std::error_code Before(FileAction action, const Path& path) override
    {
        return counts_ == Counts::Changes ? Counted(action, path) : std::error_code{};
    }
    std::error_code BeforeReading(FileAction action, const Path& path) override
    {
        const Counts kind = action == FileAction::Look ? Counts::Looks : Counts::Reads;
        return counts_ == kind ? Counted(action, path) : std::error_code{};
    }
    [[nodiscard]] int Count() const { return count_; }

protected:
    /// `chosen`: this is the n-th call itself. Called from any thread.
    virtual std::error_code AtCall(bool, const std::string&) { return {}; }

private:
    std::error_code Counted(FileAction action, const Path& path)
    {
        const int call = ++count_;
        if (n_ <= 0 || call < n_)
            return {};
        return AtCall(call == n_, NameOf(action) + path.native());
    }
    int n_;
    Counts counts_;
    std::atomic<int> count_{0};
};

class FaultHook : public CountingHook
{
public:
    FaultHook(int n, std::errc error, AfterFault after, Counts counts = Counts::Changes)
        : CountingHook(n, counts), error_(std::make_error_code(error)), after_(after)
    {
    }
    std::string call;

private:
    std::error_code AtCall(bool chosen, const std::string& words) override
    {
        if (chosen) {
            const std::lock_guard lock{mutex_};
            call = words;
        }
        return chosen || after_ == AfterFault::Fails ? error_ : std::error_code{};
    }
    std::error_code error_;
    AfterFault after_;
    std::mutex mutex_;
};

constexpr int endedTrue = 0;
constexpr int endedFalse = 1;
constexpr int endedKilled = 77;
constexpr int endedFailing = 78; ///< an expectation failed in the child

/// Ends the process; the call's words go through a pipe to whoever waits.
class KillHook : public CountingHook
{
public:
    KillHook(int n, int pipe) : CountingHook(n), pipe_(pipe) {}

private:
    std::error_code AtCall(bool, const std::string& words) override
    {
        // Whether the words arrive is no part of the test.
        [[maybe_unused]] const auto written = ::write(pipe_, words.data(), words.size());
        ::_exit(endedKilled);
    }
    int pipe_;
};

[[noreturn]] void RunInChild(int n, const FaultyWork& work, int pipe)
{
    const bool failedBefore = ::testing::Test::HasFailure();
    int ending = endedFailing;
    {
        const KillHook hook{n, pipe};
        ending = work() ? endedTrue : endedFalse;
    }
    if (!failedBefore && ::testing::Test::HasFailure())
        ending = endedFailing;
    std::fflush(nullptr);
    ::_exit(ending);
}

} // namespace

FaultRun WithFaultAt(int n, const FaultyWork& work, std::errc error, AfterFault after)
{
    FaultHook hook{n, error, after};
    const bool answer = work();
    return {answer, hook.Count() >= n, hook.call};
}

FaultRun WithReadFaultAt(int n, const FaultyWork& work, std::errc error, AfterFault after)
{
    FaultHook hook{n, error, after, Counts::Reads};
    const bool answer = work();
    return {answer, hook.Count() >= n, hook.call};
}

FaultRun WithLookFaultAt(int n, const FaultyWork& work, std::errc error, AfterFault after)
{
    FaultHook hook{n, error, after, Counts::Looks};
    const bool answer = work();
    return {answer, hook.Count() >= n, hook.call};
}

void AtEachReadAndLook(const std::function<FaultRun(const FailingRun&)>& once)
{
    for (const auto withFaultAt : {&WithReadFaultAt, &WithLookFaultAt})
        for (int step = 1; !::testing::Test::HasFailure(); step = NextPoint(step)) {
            ASSERT_LT(step, 5000) << "never finished";
            SCOPED_TRACE("failed at step " + std::to_string(step));
            const FaultRun run = once([&](const FaultyWork& work) {
                return withFaultAt(step, work, std::errc::io_error, AfterFault::Works);
            });
            if (::testing::Test::HasFailure())
                ADD_FAILURE() << "the call that failed: " << run.call;
            if (!run.reached)
                break;
        }
}

FailingCalls::FailingCalls(FileAction action, std::string ending, int times, std::errc error)
    : action_(action), ending_(std::move(ending)), times_(times),
      error_(std::make_error_code(error))
{
    platform::SetFileHook(this);
}

FailingCalls::~FailingCalls()
{
    platform::SetFileHook(nullptr);
}

std::error_code FailingCalls::Before(FileAction action, const Path& path)
{
    if (action != action_ || !path.native().ends_with(ending_))
        return {};
    if (const int call = ++failed_; times_ >= 0 && call > times_) {
        failed_ = times_;
        return {};
    }
    return error_;
}

KillRun WithKillAt(int n, const FaultyWork& work)
{
    int ends[2] = {-1, -1};
    if (::pipe(ends) != 0) {
        ADD_FAILURE() << "no pipe";
        return {};
    }
    std::fflush(nullptr); // what is buffered would be printed twice
    const pid_t child = ::fork();
    if (child == 0) {
        ::close(ends[0]);
        RunInChild(n, work, ends[1]);
    }
    ::close(ends[1]);
    KillRun run;
    char words[512];
    for (ssize_t got = 0; (got = ::read(ends[0], words, sizeof words)) > 0;)
        run.call.append(words, static_cast<std::size_t>(got));
    ::close(ends[0]);
    int state = 0;
    if (child < 0 || ::waitpid(child, &state, 0) != child) {
        ADD_FAILURE() << "no child process";
        return {};
    }
    const int ending = WIFEXITED(state) ? WEXITSTATUS(state) : -1;
    run.killed = ending == endedKilled;
    run.answer = ending == endedTrue;
    if (ending == endedFailing)
        ADD_FAILURE() << "an expectation failed in the child that was to end at call " << n;
    else if (ending != endedKilled && ending != endedTrue && ending != endedFalse)
        ADD_FAILURE() << "the child that was to end at call " << n << " crashed, state " << state;
    return run;
}

int WalkStride()
{
    static const int stride = [] {
        const char* said = std::getenv("KESTROVA_WALK_STRIDE");
        return said == nullptr ? 1 : std::max(1, std::atoi(said));
    }();
    return stride;
}

int NextPoint(int point)
{
    return point + std::min(WalkStride(), std::max(1, point));
}

void TellPoints(int points, int atLeast)
{
    std::printf("%d points\n", points);
    EXPECT_GE(points * WalkStride(), atLeast) << "the walk ended too soon";
}

int CountFileCalls(const FaultyWork& work)
{
    const CountingHook hook{0};
    (void)work(); // its answer is not what is asked here
    return hook.Count();
}

} // namespace kestrova::testing
