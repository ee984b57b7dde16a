#include "platform/process_mark.h"

#include "platform/file_content.h"
#include "platform/files.h"

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <unistd.h>

namespace kestrova::platform
{

namespace
{

bool HasVariable(const Path& process, const std::string& assignment)
{
    std::string variables; // each ends in a NUL
    if (ReadAll(process / "environ", variables))
        return false;
    variables.insert(variables.begin(), '\0');
    return variables.find('\0' + assignment + '\0') != std::string::npos;
}

} // namespace

std::string FreshRunMark()
{
    static std::atomic<int> count{0};
    const auto now = std::chrono::system_clock::now().time_since_epoch().count();
    return std::to_string(::getpid()) + '-' + std::to_string(now) + '-' + std::to_string(++count);
}

std::vector<RunningProgram> ProcessesMarked(const std::string& variable, const std::string& value)
{
    std::vector<RunningProgram> found;
    std::vector<FolderEntry> entries;
    if (ListFolder("/proc", entries))
        return found;
    for (const FolderEntry& entry : entries) {
        const std::int64_t pid = std::strtoll(entry.name.c_str(), nullptr, 10);
        const Path process = Path{"/proc"} / entry.name;
        if (pid <= 0 || pid == ::getpid() || !HasVariable(process, variable + '=' + value))
            continue;
        std::string name;
        if (ReadAll(process / "comm", name) || name.empty())
            continue;
        name.pop_back(); // the line end
        found.push_back({pid, std::move(name)});
    }
    return found;
}

void EndProcess(std::int64_t pid)
{
    if (pid > 1)
        ::kill(static_cast<pid_t>(pid), SIGKILL);
}

} // namespace kestrova::platform
