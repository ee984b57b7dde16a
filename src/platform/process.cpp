#include "platform/process.h"

#include "platform/files.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <csignal>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace kestrova::platform
{

namespace fs = std::filesystem;

namespace
{

std::vector<std::string> EnvironmentWith(const Launch& launch)
{
    std::vector<std::string> result;
    for (char** entry = environ; *entry != nullptr; ++entry) {
        const std::string_view text = *entry;
        const bool replaced =
            std::any_of(launch.environment.begin(), launch.environment.end(), [&](const auto& own) {
                return text.starts_with(own.first + "=");
            });
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

bool LiesIn(const fs::path& path, const fs::path& folder)
{
    const std::string& text = path.native();
    const std::string& root = folder.native();
    return text == root || (text.starts_with(root) && text[root.size()] == '/');
}

fs::path LinkTarget(const fs::path& link)
{
    std::error_code failure;
    fs::path target = fs::read_symlink(link, failure);
    return failure ? fs::path{} : target;
}

} // namespace

std::error_code StartDetached(const Launch& launch, std::int64_t& pid)
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

    const pid_t child = ::fork();
    if (child == 0) {
        ::setsid();
        // What this program ignores the other one must not: that would outlive the exec.
        ::signal(SIGPIPE, SIG_DFL);
        const int nothing = ::open("/dev/null", O_RDWR);
        for (const int stream : {0, 1, 2})
            ::dup2(nothing, stream);
        if (launch.folder.empty() || ::chdir(launch.folder.c_str()) == 0)
            ::execve(program.c_str(), argv.data(), envp.data());
        const int failure = errno;
        (void)!::write(report[1], &failure, sizeof failure);
        ::_exit(127);
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
    if (got == sizeof failure) {
        ::waitpid(child, nullptr, 0);
        return {failure, std::generic_category()};
    }
    pid = child;
    return {};
}

std::int64_t OwnProcess()
{
    return ::getpid();
}

bool IsRunning(std::int64_t pid)
{
    if (pid <= 0)
        return false;
    const pid_t reaped = ::waitpid(static_cast<pid_t>(pid), nullptr, WNOHANG);
    if (reaped == static_cast<pid_t>(pid))
        return false;
    return ::kill(static_cast<pid_t>(pid), 0) == 0 || errno == EPERM;
}

std::vector<RunningProgram> ProgramsRunningIn(const fs::path& folder)
{
    std::vector<RunningProgram> found;
    std::error_code failure;
    const fs::path root = fs::canonical(folder, failure);
    std::vector<FolderEntry> entries;
    if (failure || ListFolder("/proc", entries))
        return found;
    for (const FolderEntry& entry : entries) {
        const std::int64_t pid = std::strtoll(entry.name.c_str(), nullptr, 10);
        if (pid <= 0 || pid == ::getpid())
            continue;
        const fs::path place = fs::path{"/proc"} / entry.name;
        if (!LiesIn(LinkTarget(place / "exe"), root) && !LiesIn(LinkTarget(place / "cwd"), root))
            continue;
        std::string name;
        if (ReadAll(place / "comm", name) || name.empty())
            continue;
        name.pop_back(); // the line end
        // A zombie keeps no folder; its links are unreadable, so it never comes here.
        found.push_back({pid, std::move(name)});
    }
    return found;
}

fs::path FindOnPath(const std::string& name)
{
    const char* variable = std::getenv("PATH");
    const std::string_view path = variable != nullptr ? variable : "/usr/bin:/bin";
    for (std::size_t start = 0; start <= path.size();) {
        const std::size_t end = std::min(path.find(':', start), path.size());
        const fs::path candidate = fs::path{path.substr(start, end - start)} / name;
        if (FactsOf(candidate).kind == FileKind::File && ::access(candidate.c_str(), X_OK) == 0)
            return candidate;
        start = end + 1;
    }
    return {};
}

} // namespace kestrova::platform
