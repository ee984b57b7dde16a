#pragma once

#include "core/files.h"
#include "platform/optical_drives.h"
#include "platform/places.h"
#include "platform/process.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kestrova
{

struct Drive {
    Path folder; ///< where it is mounted
    std::uint64_t free = 0;
    bool writable = false;
};

/// Keys that work while the game has the screen.
enum class GameKey { F9, F11 };

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
    /// Where discs that can only be read are mounted now, in the order of the system.
    virtual std::vector<Path> Discs() = 0;
    /// The drives for discs, whatever lies in them.
    virtual std::vector<platform::OpticalDrive> OpticalDrives() = 0;
    virtual Status MoveDoor(const Path& device, platform::DoorMove move) = 0;
    /// Opens a file or an address with the program that the desktop has for it.
    virtual Status Open(const std::string& fileOrAddress, const Path& folder) = 0;
    /// Starts a program that goes on by itself; its process id.
    virtual Result<std::int64_t> Start(const platform::Launch& launch) = 0;
    /// The same for a program that nobody asks for again.
    virtual Status StartAndForget(const platform::Launch& launch) = 0;
    virtual bool IsRunning(std::int64_t pid) = 0;
    /// The exit code of a started program, once it has ended.
    virtual std::optional<int> ExitOf(std::int64_t pid) = 0;
    virtual std::vector<platform::RunningProgram> ProgramsRunningIn(const Path& folder) = 0;
    /// The executable of that name on the system's path; empty when there is none.
    virtual Path FindTool(const std::string& name) = 0;
    /// Whether the desktop tells of keys that are pressed in other programs' windows.
    virtual bool SeesKeys() = 0;
    /// True while the key is down, whichever window has the keyboard, and once for a press that
    /// came and went since the last question.
    virtual bool IsKeyDown(GameKey key) = 0;
    /// Types digits, and Enter for a line feed, into the window that has the keyboard.
    virtual void TypeKeys(std::string_view keys) = 0;
    /// Gives the keyboard to the window of that title, and waits for it. False when there is none.
    virtual bool ActivateWindow(const std::string& title) = 0;
    /// The picture on the clipboard as the bytes of a bitmap or jpeg; empty when there is none. A
    /// failure when its owner does not hand it over now. It may take seconds.
    virtual Result<std::string> ClipboardPicture() = 0;
    virtual void ClearClipboard() = 0;
    /// Tells the person who looks at other windows; where the desktop shows no such words nothing
    /// happens. The next one takes the place of the one before.
    virtual void Notify(const std::string& title, const std::string& text) = 0;
    /// Ends a program that runs; with `byForce` it is not asked.
    virtual Status EndProgram(std::int64_t pid, bool byForce) = 0;
};

/// The machine that this program runs on, without what only windows reach: keys and clipboard.
class DesktopMachine : public Machine
{
public:
    std::int64_t NowNs() override;
    std::string BootId() override;
    Result<std::uint64_t> FreeSpace(const Path& path) override;
    std::vector<Drive> FixedDrives() override;
    std::vector<Path> Discs() override;
    std::vector<platform::OpticalDrive> OpticalDrives() override;
    Status MoveDoor(const Path& device, platform::DoorMove move) override;
    Status Open(const std::string& fileOrAddress, const Path& folder) override;
    Result<std::int64_t> Start(const platform::Launch& launch) override;
    Status StartAndForget(const platform::Launch& launch) override;
    bool IsRunning(std::int64_t pid) override;
    std::optional<int> ExitOf(std::int64_t pid) override;
    std::vector<platform::RunningProgram> ProgramsRunningIn(const Path& folder) override;
    Path FindTool(const std::string& name) override;
    bool SeesKeys() override { return false; }
    bool IsKeyDown(GameKey) override { return false; }
    void TypeKeys(std::string_view) override {}
    bool ActivateWindow(const std::string&) override { return false; }
    Result<std::string> ClipboardPicture() override { return std::string{}; }
    void ClearClipboard() override {}
    void Notify(const std::string&, const std::string&) override {}
    Status EndProgram(std::int64_t pid, bool byForce) override;

protected:
    /// Who is told when the desktop says only after `Open` that it opens nothing; another thread
    /// tells it. Nobody in a terminal, which has gone on.
    virtual platform::LateRefusal WhenRefusedLate() { return {}; }
};

/// What a desktop that opens nothing is told by.
Failure DesktopRefused(const std::string& fileOrAddress);

/// The fixed, writable drive with the most free space; the first of equals.
Drive FindLargestDrive(Machine& machine);

} // namespace kestrova
