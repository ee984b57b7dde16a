#include "platform/child_process.h"

#include "platform/last_error.h"
#include "platform/spawn.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kestrova::platform
{

namespace
{

using std::chrono::milliseconds;

/// What a pipe holds at most on this system, so that one reading empties it.
constexpr std::size_t pipeSize = 65'536;
/// How long a wait may last where the end of a child wakes nobody.
constexpr milliseconds blindSlice{10};

void Close(int& descriptor)
{
    if (descriptor >= 0)
        ::close(descriptor);
    descriptor = -1;
}

struct Pipe {
    int from = -1;
    int to = -1;
    ~Pipe()
    {
        Close(from);
        Close(to);
    }
    Pipe() = default;
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    std::error_code Open()
    {
        int ends[2];
        if (::pipe2(ends, O_CLOEXEC) != 0)
            return LastError();
        from = ends[0];
        to = ends[1];
        ::fcntl(from, F_SETFL, O_NONBLOCK);
        return {};
    }
};

/// The bytes as a file without a name: a child that reads slowly or not at all holds up nobody.
std::error_code InputFile(std::string_view bytes, int& descriptor)
{
    descriptor = ::memfd_create("input", MFD_CLOEXEC);
    if (descriptor < 0)
        return LastError();
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR)
            return LastError();
        bytes.remove_prefix(written > 0 ? static_cast<std::size_t>(written) : 0);
    }
    return ::lseek(descriptor, 0, SEEK_SET) < 0 ? LastError() : std::error_code{};
}

/// Appends what is there now; closes the descriptor at its end.
void Take(int& descriptor, std::string& into)
{
    std::array<char, pipeSize> buffer;
    for (std::size_t taken = 0; descriptor >= 0 && taken < pipeSize;) {
        const ssize_t got = ::read(descriptor, buffer.data(), buffer.size() - taken);
        if (got > 0) {
            into.append(buffer.data(), static_cast<std::size_t>(got));
            taken += static_cast<std::size_t>(got);
        } else if (got == 0) {
            Close(descriptor);
        } else if (errno != EINTR) {
            if (errno != EAGAIN)
                Close(descriptor);
            return;
        }
    }
}

} // namespace

ChildProcess::~ChildProcess()
{
    if (pid_ != 0) {
        Kill();
        Finish();
    }
    Close(output_);
    Close(errors_);
    Close(exit_);
}

std::error_code ChildProcess::Start(const Launch& launch, const ChildStreams& streams)
{
    Pipe output;
    Pipe errors;
    int input = -1;
    std::error_code failure = output.Open();
    if (!failure && !streams.joined)
        failure = errors.Open();
    if (!failure && streams.input)
        failure = InputFile(*streams.input, input);
    pid_t pid = 0;
    if (!failure)
        failure = Spawn(launch, {input, output.to, streams.joined ? output.to : errors.to},
                        launch.endsByItself ? Bond::GoesOn : Bond::EndsWithParent, pid);
    Close(input);
    if (failure)
        return failure;
    pid_ = pid;
    std::swap(output_, output.from);
    std::swap(errors_, errors.from);
    exit_ = static_cast<int>(::syscall(SYS_pidfd_open, pid, 0));
    return {};
}

bool ChildProcess::HasEnded() const
{
    // Not waited for yet: until that, the number of the child and of its group stay taken.
    siginfo_t info{};
    return pid_ == 0 ||
           (::waitid(P_PID, static_cast<id_t>(pid_), &info, WEXITED | WNOHANG | WNOWAIT) == 0 &&
            info.si_pid != 0);
}

void ChildProcess::WaitForAny(std::span<const ChildProcess* const> children, milliseconds slice)
{
    std::vector<pollfd> waits;
    for (const ChildProcess* const child : children) {
        if (child->pid_ == 0)
            continue;
        for (const int descriptor : {child->output_, child->errors_, child->exit_})
            waits.push_back({descriptor, POLLIN, 0});
        if (child->exit_ < 0)
            slice = std::min(slice, blindSlice);
    }
    (void)::poll(waits.data(), waits.size(), static_cast<int>(slice.count()));
}

bool ChildProcess::Read(milliseconds slice, std::string& output, std::string& errors)
{
    const ChildProcess* const self = this;
    WaitForAny({&self, 1}, slice);
    // Asked before the reading: what an ended child wrote is in the pipes by now.
    const bool ended = HasEnded();
    Take(output_, output);
    Take(errors_, errors);
    return !ended;
}

void ChildProcess::Terminate()
{
    if (pid_ != 0)
        ::kill(static_cast<pid_t>(-pid_), SIGTERM);
}

void ChildProcess::Kill()
{
    if (pid_ != 0)
        ::kill(static_cast<pid_t>(-pid_), SIGKILL);
}

ChildEnd ChildProcess::Finish()
{
    int status = 0;
    pid_t waited = 0;
    if (pid_ != 0)
        do
            waited = ::waitpid(static_cast<pid_t>(pid_), &status, 0);
        while (waited < 0 && errno == EINTR);
    pid_ = 0;
    Close(exit_);
    if (waited > 0 && WIFSIGNALED(status))
        return {0, WTERMSIG(status)};
    return {waited > 0 ? WEXITSTATUS(status) : 0, 0};
}

} // namespace kestrova::platform
