#include "app/session_discs.h"

#include "core/look.h"
#include "drives/attached_discs.h"
#include "drives/cd_drives.h"
#include "platform/files.h"
#include "platform/optical_drives.h"
#include "tools/tools.h"

#include <chrono>
#include <thread>

namespace kestrova
{

namespace
{

/// A blank disc, and none at all, hold no levels.
bool MayHoldLevels(const CdDrive& drive)
{
    return drive.medium == DiscMedium::Written || drive.medium == DiscMedium::Unknown ||
           !drive.folder.empty();
}

} // namespace

std::vector<DiscDrive> SessionDrives::Drives()
{
    std::vector<DiscDrive> drives;
    for (const CdDrive& drive :
         ListCdDrives(session_.machine, session_.programFolder, session_.settings))
        drives.push_back({drive.name, drive.label, MayHoldLevels(drive), drive.folder});
    return drives;
}

Result<Path> SessionDrives::Open(const DiscDrive& drive)
{
    auto found =
        FindCdDrive(session_.machine, session_.programFolder, session_.settings, drive.name);
    if (!found)
        return MakeFailure(ErrorCode::Missing, drive.name);
    if (!found->folder.empty())
        return found->folder;
    return AttachDisc(ToolsOf(session_), session_.machine, session_.host, *found);
}

Result<Path> SessionDrives::OpenImage(const Path& image)
{
    // What lies in a drive is seen there already.
    const platform::FileFacts facts = platform::FactsOf(image);
    for (const CdDrive& drive :
         ListCdDrives(session_.machine, session_.programFolder, session_.settings))
        if (drive.emulated && !drive.folder.empty() &&
            IsSameThing(platform::FactsOf(drive.device), facts))
            return drive.folder;
    return AttachImage(ToolsOf(session_), session_.machine, session_.host, image);
}

std::string SessionDrives::LabelOf(const Path& image)
{
    platform::DiscHead head;
    return platform::ReadDiscHead(image, head) ? std::string{} : head.label;
}

void SessionDrives::WaitForDisc()
{
    constexpr std::chrono::milliseconds threeTenths{300};
    std::this_thread::sleep_for(threeTenths);
}

SessionDiscs::SessionDiscs(Session& session, DiscWindows windows)
    : session_(session), drives_(session),
      shelf_(session.host, session.machine, drives_, std::move(windows))
{
    session_.discs = &shelf_;
}

SessionDiscs::~SessionDiscs()
{
    session_.discs = nullptr;
}

} // namespace kestrova
