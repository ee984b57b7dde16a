#pragma once

#include "platform/file_hook.h"

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

/// How many changing calls the work makes.
int CountFileCalls(const FaultyWork& work);

} // namespace kestrova::testing
