#include "session/machine.h"

#include "platform/clock.h"
#include "platform/places.h"
#include "words/machine.h"

namespace kestrova
{

std::int64_t DesktopMachine::NowNs()
{
    return platform::NowNs();
}

std::string DesktopMachine::BootId()
{
    return platform::BootId();
}

Result<std::uint64_t> DesktopMachine::FreeSpace(const Path& path)
{
    Path place = ResolvePath(path);
    while (!place.empty() && place != place.parent_path() &&
           platform::FactsOf(place).kind == platform::FileKind::Missing)
        place = place.parent_path();
    std::uint64_t bytes = 0;
    if (const auto failure = platform::FreeSpace(place.empty() ? Path{"."} : place, bytes))
        return MakeFailure(ErrorCode::CannotRead, TextOf(place), failure);
    return bytes;
}

namespace
{

bool IsDisc(const platform::MountedDrive& mounted)
{
    return mounted.kind == "iso9660" || mounted.kind == "udf";
}

} // namespace

std::vector<Drive> DesktopMachine::FixedDrives()
{
    std::vector<Drive> drives;
    for (const platform::MountedDrive& mounted : platform::MountedDrives()) {
        if (!mounted.fixed || IsDisc(mounted))
            continue;
        Drive drive{mounted.folder, 0,
                    !mounted.readOnly && platform::IsWritableFolder(mounted.folder)};
        if (!platform::FreeSpace(mounted.folder, drive.free))
            drives.push_back(std::move(drive));
    }
    return drives;
}

std::vector<Path> DesktopMachine::Discs()
{
    std::vector<Path> discs;
    for (const platform::MountedDrive& mounted : platform::MountedDrives())
        if (IsDisc(mounted))
            discs.push_back(mounted.folder);
    return discs;
}

std::vector<platform::OpticalDrive> DesktopMachine::OpticalDrives()
{
    return platform::OpticalDrives();
}

Status DesktopMachine::MoveDoor(const Path& device, platform::DoorMove move)
{
    if (const auto failure = platform::MoveDoor(device, move))
        return MakeFailure(ErrorCode::CannotOpen, TextOf(device), failure);
    return {};
}

Failure DesktopRefused(const std::string& fileOrAddress)
{
    return Failure{ErrorCode::CannotOpen, fileOrAddress, GetMsg(Msg::DesktopOpensNone)};
}

Status DesktopMachine::Open(const std::string& fileOrAddress, const Path& folder)
{
    const auto failure = platform::OpenWithDesktop(fileOrAddress, folder, WhenRefusedLate());
    if (failure == std::errc::not_supported)
        return DesktopRefused(fileOrAddress);
    if (failure)
        return MakeFailure(ErrorCode::CannotOpen, fileOrAddress, failure);
    return {};
}

namespace
{

Failure NotStarted(const platform::Launch& launch, const std::error_code& reason)
{
    return MakeFailure(ErrorCode::CannotOpen, launch.argv.empty() ? "" : launch.argv.front(),
                       reason);
}

} // namespace

Result<std::int64_t> DesktopMachine::Start(const platform::Launch& launch)
{
    std::int64_t pid = 0;
    if (const auto failure = platform::StartDetached(launch, pid))
        return NotStarted(launch, failure);
    return pid;
}

Status DesktopMachine::StartAndForget(const platform::Launch& launch)
{
    if (const auto failure = platform::StartAndForget(launch))
        return NotStarted(launch, failure);
    return {};
}

bool DesktopMachine::IsRunning(std::int64_t pid)
{
    return platform::IsRunning(pid);
}

Status DesktopMachine::EndProgram(std::int64_t pid, bool byForce)
{
    if (const auto failure = platform::EndProcess(pid, byForce))
        return MakeFailure(ErrorCode::Refused, std::to_string(pid), failure);
    return {};
}

std::optional<int> DesktopMachine::ExitOf(std::int64_t pid)
{
    return platform::ExitOf(pid);
}

std::vector<platform::RunningProgram> DesktopMachine::ProgramsRunningIn(const Path& folder)
{
    return platform::ProgramsRunningIn(ResolvePath(folder));
}

Path DesktopMachine::FindTool(const std::string& name)
{
    return platform::FindOnPath(name);
}

Drive FindLargestDrive(Machine& machine)
{
    Drive largest;
    for (const Drive& drive : machine.FixedDrives())
        if (drive.writable && drive.free > largest.free)
            largest = drive;
    return largest;
}

} // namespace kestrova
