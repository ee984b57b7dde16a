#pragma once

#include "platform/file_hook.h"

#include <atomic>
#include <functional>
#include <string>

/// A disk that fails, or a program that is killed, at any chosen call that changes a file.
namespace kestrova::testing
{

/// The work under test; its answer is handed on. It must bring its own answers to questions
/// (`ScriptedHost::AnswerAll`), since nobody knows how far it comes.
using FaultyWork = std::function<bool()>;

enum class AfterFault {
    Works, ///< one call fails, the next one works again
    Fails  ///< a disk that is gone: every later call fails as well
};

struct FaultRun {
    bool answer = false;  ///< what the work answered
    bool reached = false; ///< the chosen call came; when not, the work needs fewer calls
    std::string call;     ///< that call in words, for a failing test's message
    operator bool() const { return answer; }
};

/// Runs the work while its n-th changing call (from 1) fails with `error`. A loop over n ends at
/// the first run that was not `reached`.
FaultRun WithFaultAt(int n, const FaultyWork& work, std::errc error = std::errc::io_error,
                     AfterFault after = AfterFault::Works);

struct KillRun {
    bool killed = false; ///< the process ended before its n-th changing call
    bool answer = false; ///< what the work answered when it was not killed
    std::string call;    ///< the call at which it ended
};

/// Runs the work in a child process that ends at once, without any clean-up, in front of its n-th
/// changing call. Only files tell what it did: memory of this process is as before. A failed
/// expectation or a crash in the child is a failure of the running test.
KillRun WithKillAt(int n, const FaultyWork& work);

/// A walk takes every so many of its points: all of them, or as `KESTROVA_WALK_STRIDE` says, for a
/// build in which each costs several times as much.
int WalkStride();
/// The point of a walk that comes after this one. The first ones lie closer together, so that short
/// walks have points too.
int NextPoint(int point);

/// Prints how many calls a walk came by, one after the other, and expects no fewer than `atLeast`:
/// a walk that ends at once proves nothing.
void TellPoints(int points, int atLeast);

/// How many changing calls the work makes.
int CountFileCalls(const FaultyWork& work);

/// The same as `WithFaultAt` for the calls that read: listings, openings, pieces of content.
FaultRun WithReadFaultAt(int n, const FaultyWork& work, std::errc error = std::errc::io_error,
                         AfterFault after = AfterFault::Works);

/// The same for single looks at a name. They are many: a walk takes those of one path after the
/// other, or every so many.
FaultRun WithLookFaultAt(int n, const FaultyWork& work, std::errc error = std::errc::io_error,
                         AfterFault after = AfterFault::Works);

/// Hands a way to run work, in which each time another call that reads or looks fails once, to
/// `once`, which makes its world, runs the work in it, judges, and answers what the run was.
using FailingRun = std::function<FaultRun(const FaultyWork&)>;
void AtEachReadAndLook(const std::function<FaultRun(const FailingRun&)>& once);

/// As long as it lives, one kind of call fails for paths that end with `ending`, `times` times
/// (below 0: always). Reading and changing actions alike. One at a time.
class FailingCalls : public platform::FileHook
{
public:
    FailingCalls(platform::FileAction action, std::string ending, int times = 1,
                 std::errc error = std::errc::io_error);
    ~FailingCalls() override;
    FailingCalls(const FailingCalls&) = delete;
    FailingCalls& operator=(const FailingCalls&) = delete;

    std::error_code Before(platform::FileAction action, const platform::Path& path) override;
    std::error_code BeforeReading(platform::FileAction action, const platform::Path& path) override
    {
        return Before(action, path);
    }
    /// How many calls failed so far.
    [[nodiscard]] int Failed() const { return failed_; }

private:
    platform::FileAction action_;
    std::string ending_;
    int times_;
    std::error_code error_;
    std::atomic<int> failed_{0};
};

} // namespace kestrova::testing
