#include "drives/cd_drives.h"

#include "drives/inserted_medium.h"
#include "drives/seen_discs.h"
#include "words/drives.h"

#include <algorithm>
#include <thread>

namespace kestrova
{

namespace
{

CdDrive RealDrive(platform::OpticalDrive drive)
{
    return {std::move(drive.name),
            std::move(drive.model),
            std::move(drive.device),
            false,
            drive.writer,
            std::move(drive.folder),
            drive.medium,
            std::move(drive.label),
            drive.total,
            0};
}

/// What the file that lies in a drive of the settings is.
void LookAtMedium(CdDrive& drive, std::uint64_t capacity)
{
    const platform::FileFacts facts = platform::FactsOf(drive.device);
    if (drive.device.empty() || facts.kind != platform::FileKind::File) {
        drive.gone = std::move(drive.device);
        drive.device.clear();
        return;
    }
    if (facts.size == 0) {
        drive.medium = DiscMedium::Blank;
        drive.total = drive.free = capacity;
        return;
    }
    platform::DiscHead head;
    const bool read = !platform::ReadDiscHead(drive.device, head);
    drive.medium = read ? DiscMedium::Written : DiscMedium::Unknown;
    drive.label = head.label;
    drive.total = facts.size;
}

CdDrive SettingsDrive(Machine& machine, const Path& programFolder, const DriveSetting& setting)
{
    constexpr std::uint64_t megabyte = 1 << 20;
    CdDrive drive;
    drive.name = setting.name;
    drive.emulated = true;
    drive.writer = setting.writes;
    drive.megabytes = static_cast<int>(setting.megabytes);
    drive.place = PathOfSetting(programFolder, setting.folder);
    drive.device = InsertedMedium(programFolder, setting.name)
                       .value_or(PathOfSetting(programFolder, setting.medium));
    const std::uint64_t room =
        machine.FreeSpace(drive.device.empty() ? programFolder : drive.device).ValueOr(0);
    LookAtMedium(drive, setting.megabytes == 0 ? room : setting.megabytes * megabyte);
    if (!drive.device.empty())
        drive.folder = SeenFolder(programFolder, SeenKeyOfDrive(drive.name), drive.device);
    return drive;
}

} // namespace

std::vector<CdDrive> ListCdDrives(Machine& machine, const Path& programFolder,
                                  const ProgramSettings& settings)
{
    std::vector<CdDrive> drives;
    for (platform::OpticalDrive& drive : machine.OpticalDrives())
        drives.push_back(RealDrive(std::move(drive)));
    for (const DriveSetting& setting : settings.drives)
        drives.push_back(SettingsDrive(machine, programFolder, setting));
    return drives;
}

std::optional<CdDrive> FindCdDrive(Machine& machine, const Path& programFolder,
                                   const ProgramSettings& settings, const std::string& name)
{
    std::vector<CdDrive> drives = ListCdDrives(machine, programFolder, settings);
    const auto found = std::find_if(drives.begin(), drives.end(), [&](const CdDrive& drive) {
        return drive.name == name ||
               (!name.empty() && (drive.device == name || //
                                  drive.folder == name || drive.place == name));
    });
    return found == drives.end() ? std::nullopt : std::optional{std::move(*found)};
}

Result<CdDrive> FindCdWriter(const std::vector<CdDrive>& drives, std::string& warning)
{
    const auto writes = [](const CdDrive& drive) { return drive.writer; };
    const bool sure = std::count_if(drives.begin(), drives.end(), writes) <= 1;
    warning = sure ? std::string{} : GetMsg(Msg::CdWriterDoubtful);
    const auto found = std::find_if(drives.begin(), drives.end(), writes);
    if (found == drives.end())
        return InWords(ErrorCode::Missing, GetMsg(Msg::NoCdWriter));
    return *found;
}

Result<CdDrive> WaitReady(Machine& machine, Host& host, const Path& programFolder,
                          const ProgramSettings& settings, const CdDrive& drive)
{
    constexpr std::chrono::milliseconds stepTime{30};
    constexpr int stepsALook = 10;
    const auto progress =
        host.BeginProgress(ProgressWindow::Progress, GetMsg(Msg::WaitForReadyUnit));
    progress->AllowStop();
    std::int64_t start = machine.NowNs();
    for (;;) {
        const auto now = FindCdDrive(machine, programFolder, settings, drive.name);
        if (now && now->medium == DiscMedium::Blank)
            return InWords(ErrorCode::Missing, GetMsg(Msg::CdIsEmpty));
        if (now && now->medium == DiscMedium::Written) {
            if (now->total == 0)
                return InWords(ErrorCode::Missing, GetMsg(Msg::CdIsEmpty));
            return *now;
        }
        for (int i = 0; i < stepsALook; ++i) {
            if (!progress->Step())
                return Failure{ErrorCode::Stopped, drive.name};
            std::this_thread::sleep_for(stepTime);
        }
        if (machine.NowNs() - start < readyWaitNs)
            continue;
        if (!host.CanAsk() || !host.AskYesNo(GetMsg(Msg::AskUnitNotReady, {drive.name, lineBreak})))
            return InWords(ErrorCode::NotDone, GetMsg(Msg::CdUnitNotReady));
        start = machine.NowNs();
    }
}

} // namespace kestrova
