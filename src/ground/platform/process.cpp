#include "platform/process.h"

#include "platform/file_content.h"
#include "platform/files.h"
#include "platform/last_error.h"
#include "platform/spawn.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <sys/wait.h>
#include <unistd.h>

namespace kestrova::platform
{

namespace fs = std::filesystem;

namespace
{

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
    pid_t child = 0;
    const std::error_code failure = Spawn(launch, {}, Bond::GoesOn, child);
    pid = child;
    return failure;
}

std::error_code StartAndForget(const Launch& launch)
{
    pid_t none = 0;
    return Spawn(launch, {}, Bond::None, none);
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

std::error_code EndProcess(std::int64_t pid, bool byForce)
{
    // 0 and below name groups of processes.
    if (pid <= 1)
        return std::make_error_code(std::errc::no_such_process);
    if (::kill(static_cast<pid_t>(pid), byForce ? SIGKILL : SIGTERM) == 0 || errno == ESRCH)
        return {};
    return LastError();
}

std::optional<int> ExitOf(std::int64_t pid)
{
    constexpr int signalled = 128;
    int state = 0;
    if (pid <= 0 || ::waitpid(static_cast<pid_t>(pid), &state, WNOHANG) != static_cast<pid_t>(pid))
        return {};
    return WIFEXITED(state) ? WEXITSTATUS(state) : signalled + WTERMSIG(state);
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
