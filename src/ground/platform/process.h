#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

namespace kestrova::platform
{

struct Launch {
    std::vector<std::string> argv; ///< argv[0] is searched on PATH unless it holds a slash
    std::filesystem::path folder;  ///< working folder; empty: the program's own
    std::vector<std::pair<std::string, std::string>> environment; ///< set on top of the program's
    bool endsByItself = false; ///< soon: it is left alone when this program is killed meanwhile
};

/// Starts a program that goes on by itself: a session of its own, no standard input, its output
/// dropped. The error is that of the start itself (not found, no right to execute).
/// `pid` is 0 on failure.
std::error_code StartDetached(const Launch& launch, std::int64_t& pid);

/// The same for a program that nobody asks for again: it is no child of this one, so that nothing
/// is left of it when it ends.
std::error_code StartAndForget(const Launch& launch);

/// The number of this process; another process never has it at the same time.
std::int64_t OwnProcess();

/// True while the process exists and has not become a zombie; reaps a child that has ended.
bool IsRunning(std::int64_t pid);

/// Asks a process of this user to end, or with `byForce` ends it. One that is gone is done.
std::error_code EndProcess(std::int64_t pid, bool byForce);

/// How a program that `StartDetached` began has ended: its exit code, 128 and the signal's number
/// for a killed one; none while it runs, and none when nobody can tell.
std::optional<int> ExitOf(std::int64_t pid);

struct RunningProgram {
    std::int64_t pid = 0;
    std::string name;
};

/// The processes of this user whose program file or working folder lies in `folder`,
/// this process excepted.
std::vector<RunningProgram> ProgramsRunningIn(const std::filesystem::path& folder);

/// The first executable of that name on PATH; empty when there is none.
std::filesystem::path FindOnPath(const std::string& name);

} // namespace kestrova::platform
