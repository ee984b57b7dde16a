#include "burning/drive_commands.h"

#include "burning/content_check.h"
#include "burning/file_names.h"
#include "core/text.h"
#include "drives/attached_discs.h"
#include "session/cleared_progress.h"
#include "words/burning.h"

namespace kestrova
{

namespace
{

std::optional<CdDrive> DriveOf(const DriveParts& parts, const std::string& name)
{
    return FindCdDrive(parts.machine, parts.tools.programFolder, parts.settings, name);
}

} // namespace

BurnDevice DeviceOf(const CdDrive& drive)
{
    return {drive.device, drive.emulated, drive.free, drive.name};
}

bool FindWriter(const DriveParts& parts, BurnSettings& settings, std::string& name,
                std::string& warning, BurnError& error)
{
    const auto found = FindCdWriter(
        ListCdDrives(parts.machine, parts.tools.programFolder, parts.settings), warning);
    if (!found) {
        error = ErrorFrom(found.Error(), Msg::BurnFailedTitle, BurnCode::None, BurnCode::None);
        return false;
    }
    settings.device = DeviceOf(*found);
    name = found->name;
    return true;
}

bool VerifyCd(const DriveParts& parts, const BurnSettings& settings, const std::string& extent,
              BurnError& error)
{
    const bool isAll = EqualNames(extent, OnDisk::VerifyAll);
    if (!isAll && !EqualNames(extent, OnDisk::VerifyFast)) {
        error = {GetMsg(Msg::VerifyArgumentNotValid), GetMsg(Msg::VerifyArguments)};
        return false;
    }
    const auto fail = [&](const Failure& failure) {
        error = ErrorFrom(failure, Msg::BurnFailedTitle, BurnCode::None, BurnCode::None);
        if (failure.code == ErrorCode::Stopped)
            error.detail = GetMsg(Msg::VerifyStopped);
        return false;
    };
    const auto drive = DriveOf(parts, settings.device.drive);
    if (!drive)
        return fail(InWords(ErrorCode::Missing, GetMsg(Msg::BurnNoWriter)));
    const auto ready =
        WaitReady(parts.machine, parts.host, parts.tools.programFolder, parts.settings, *drive);
    if (!ready)
        return fail(ready.Error());
    if (!isAll)
        return true;
    if (settings.progress != nullptr)
        settings.progress->SetLabel(GetMsg(Msg::VerifyLabel));
    DiscComparison comparison;
    const Status same = CompareWithSources(ready->device, settings.items, settings.noItems,
                                           settings.progress, comparison);
    if (settings.progress != nullptr)
        ClearProgress(*settings.progress);
    return same || fail(same.Error());
}

bool MoveCdDoor(const DriveParts& parts, const std::string& name, platform::DoorMove move,
                BurnError& error)
{
    if (name.empty()) {
        error = {GetMsg(Msg::DoorUnitNotCorrect), GetMsg(Msg::DoorArgument)};
        return false;
    }
    auto drive = DriveOf(parts, name);
    if (!drive) {
        error = {GetMsg(Msg::DoorUnitNotCorrect), GetMsg(Msg::DoorNotOpened) + name};
        return false;
    }
    const Status moved = MoveDoor(parts.tools, parts.machine, *drive, move);
    if (!moved) {
        error = ErrorFrom(moved.Error(), Msg::DoorUnitNotCorrect, BurnCode::None, BurnCode::None);
        error.detail = GetMsg(Msg::DoorNotMoved) + name + std::string{lineBreak} + error.detail;
    }
    return bool{moved};
}

} // namespace kestrova
