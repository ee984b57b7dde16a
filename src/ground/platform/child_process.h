#pragma once

#include "platform/process.h"

#include <chrono>
#include <optional>
#include <span>

namespace kestrova::platform
{

/// How a child ended: by itself with `code`, or by `signal` when that is not 0.
struct ChildEnd {
    int code = 0;
    int signal = 0;
};

struct ChildStreams {
    /// What the child reads as its standard input; without a value there is none.
    std::optional<std::string> input;
    /// Standard output and standard error as one, in the order in which they were written.
    bool joined = true;
};

/// A running child whose output this program reads. It has no terminal and a process group of its
/// own, which a stop ends as a whole; at the end of this object's life what still runs is killed.
class ChildProcess
{
public:
    ChildProcess() = default;
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess();

    /// Once in an object's life. The error is that of the start itself.
    std::error_code Start(const Launch& launch, const ChildStreams& streams);

    /// Waits up to `slice` until one of the children has written something or ended. Those that
    /// were not started, or were waited for, count for nothing.
    static void WaitForAny(std::span<const ChildProcess* const> children,
                           std::chrono::milliseconds slice);

    /// Waits up to `slice` for output or the end and appends what came, some 64 KB at most. False
    /// once the child has ended and what it wrote was read; children that it left behind may hold
    /// its output open, nobody waits for those.
    bool Read(std::chrono::milliseconds slice, std::string& output, std::string& errors);

    /// Asks the child and its children to end.
    void Terminate();
    /// Ends the child and its children.
    void Kill();
    /// Waits for the child's end, which `Read` or `Kill` has brought about.
    ChildEnd Finish();

private:
    [[nodiscard]] bool HasEnded() const;

    std::int64_t pid_ = 0; ///< 0 once it was waited for
    int output_ = -1;
    int errors_ = -1;
    int exit_ = -1; ///< becomes readable when the child ends; -1 where the system has no such
};

} // namespace kestrova::platform
