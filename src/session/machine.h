#pragma once

#include "core/files.h"
#include "platform/process.h"

#include <cstdint>
#include <string>
#include <vector>

namespace kestrova
{

struct Drive {
    Path folder; ///< where it is mounted
    std::uint64_t free = 0;
    bool writable = false;
};

/// What the desktop gives. Real over `platform/`, faked in tests.
class Machine
{
public:
    virtual ~Machine() = default;

    virtual std::int64_t NowNs() = 0; ///< since 1970, UTC
    virtual std::string BootId() = 0;
    /// Free bytes where `path`, or the nearest folder above it that exists, lies.
    virtual Result<std::uint64_t> FreeSpace(const Path& path) = 0;
    virtual std::vector<Drive> FixedDrives() = 0;
    /// Opens a file or an address with the program that the desktop has for it.
    virtual Status Open(const std::string& fileOrAddress, const Path& folder) = 0;
    /// Starts a program that goes on by itself; its process id.
    virtual Result<std::int64_t> Start(const platform::Launch& launch) = 0;
    virtual bool IsRunning(std::int64_t pid) = 0;
    /// The exit code of a started program, once it has ended.
    virtual std::optional<int> ExitOf(std::int64_t pid) = 0;
    virtual std::vector<platform::RunningProgram> ProgramsRunningIn(const Path& folder) = 0;
    /// The executable of that name on the system's path; empty when there is none.
    virtual Path FindTool(const std::string& name) = 0;
    virtual void ClearClipboard() = 0;
};

/// The machine that this program runs on. A face with a clipboard overrides `ClearClipboard`.
class DesktopMachine : public Machine
{
public:
    std::int64_t NowNs() override;
    std::string BootId() override;
    Result<std::uint64_t> FreeSpace(const Path& path) override;
    std::vector<Drive> FixedDrives() override;
    Status Open(const std::string& fileOrAddress, const Path& folder) override;
    Result<std::int64_t> Start(const platform::Launch& launch) override;
    bool IsRunning(std::int64_t pid) override;
    std::optional<int> ExitOf(std::int64_t pid) override;
    std::vector<platform::RunningProgram> ProgramsRunningIn(const Path& folder) override;
    Path FindTool(const std::string& name) override;
    void ClearClipboard() override {}
};

} // namespace kestrova
