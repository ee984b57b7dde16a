#include "platform/spawn.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace kestrova::platform
{

namespace
{

std::vector<std::string> EnvironmentWith(const Launch& launch)
{
    std::vector<std::string> result;
    for (char** entry = environ; *entry != nullptr; ++entry) {
        const std::string_view text = *entry;
        const bool replaced =
            std::any_of(launch.environment.begin(), launch.environment.end(),
                        [&](const auto& own) { return text.starts_with(own.first + "="); });
        if (!replaced)
            result.emplace_back(text);
    }
    for (const auto& [name, value] : launch.environment)
        result.push_back(name + "=" + value);
    return result;
}

std::vector<char*> Pointers(std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

/// Below are the descriptors that a child's streams are put over.
constexpr int aboveStreams = 3;

/// In the child, so only what is signal-safe. A program that was started without standard streams
/// has files of its own under their numbers, hence the move before any is put over.
void TakeStreams(const SpawnStreams& streams)
{
    const int nothing = ::open("/dev/null", O_RDWR | O_CLOEXEC);
    int sources[] = {streams.input, streams.output, streams.errors};
    for (int& source : sources)
        source = ::fcntl(source < 0 ? nothing : source, F_DUPFD_CLOEXEC, aboveStreams);
    for (int stream = 0; stream < aboveStreams; ++stream)
        ::dup2(sources[stream], stream);
    // What a library of this program opened without the mark stays here too.
    ::close_range(aboveStreams, ~0U, CLOSE_RANGE_CLOEXEC);
}

/// In the child: tells the parent why nothing was started.
[[noreturn]] void EndWith(int failure, int reportEnd)
{
    (void)!::write(reportEnd, &failure, sizeof failure);
    ::_exit(127);
}

/// In the child: goes on as a child of its own, whose parent ends here, so that the system waits
/// for it.
void LeaveToTheSystem(int reportEnd)
{
    const pid_t own = ::fork();
    if (own < 0)
        EndWith(errno, reportEnd);
    if (own > 0)
        ::_exit(0);
}

void ClearSignals()
{
    // What this program ignores or holds back the other one must not: both outlive the exec.
    ::signal(SIGPIPE, SIG_DFL);
    sigset_t none;
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
}

} // namespace

std::error_code Spawn(const Launch& launch, const SpawnStreams& streams, Bond bond, pid_t& pid)
{
    pid = 0;
    if (launch.argv.empty())
        return std::make_error_code(std::errc::invalid_argument);
    std::string program = launch.argv.front();
    if (program.find('/') == std::string::npos)
        program = FindOnPath(program).native();
    if (program.empty())
        return std::make_error_code(std::errc::no_such_file_or_directory);

    // Everything is made ready before the fork: the child may only call what is signal-safe.
    std::vector<std::string> arguments = launch.argv;
    std::vector<std::string> variables = EnvironmentWith(launch);
    const std::vector<char*> argv = Pointers(arguments);
    const std::vector<char*> envp = Pointers(variables);
    int report[2];
    if (::pipe2(report, O_CLOEXEC) != 0)
        return {errno, std::generic_category()};

    const pid_t parent = ::getpid();
    const pid_t child = ::fork();
    if (child == 0) {
        ::setsid();
        ClearSignals();
        const int reportEnd = ::fcntl(report[1], F_DUPFD_CLOEXEC, aboveStreams);
        if (bond == Bond::None)
            LeaveToTheSystem(reportEnd);
        TakeStreams(streams);
        if (bond == Bond::EndsWithParent) {
            ::prctl(PR_SET_PDEATHSIG, SIGTERM);
            if (::getppid() != parent)
                ::_exit(127);
        }
        if (launch.folder.empty() || ::chdir(launch.folder.c_str()) == 0)
            ::execve(program.c_str(), argv.data(), envp.data());
        EndWith(errno, reportEnd);
    }
    const int forkFailure = errno;
    ::close(report[1]);
    if (child < 0) {
        ::close(report[0]);
        return {forkFailure, std::generic_category()};
    }
    int failure = 0;
    ssize_t got = 0;
    do
        got = ::read(report[0], &failure, sizeof failure);
    while (got < 0 && errno == EINTR);
    ::close(report[0]);
    const bool failed = got == sizeof failure;
    if (failed || bond == Bond::None)
        ::waitpid(child, nullptr, 0);
    if (failed)
        return {failure, std::generic_category()};
    if (bond != Bond::None)
        pid = child;
    return {};
}

} // namespace kestrova::platform
