#include "app/disc_findings.h"

#include "drives/cd_drives.h"
#include "drives/drive_tools.h"
#include "tools/tools.h"
#include "words/discs_commands.h"

namespace kestrova
{

namespace
{

/// Something lies in the drive's folder that is no disc of it.
bool PlaceIsTaken(const CdDrive& drive)
{
    std::vector<platform::FolderEntry> entries;
    return drive.folder.empty() && !platform::ListFolder(drive.place, entries) && !entries.empty();
}

Finding FindingOf(const CdDrive& drive)
{
    const std::string name = GetMsg(Msg::DoctorDiscDrive, {drive.name});
    if (!drive.gone.empty())
        return {false, name, GetMsg(Msg::DoctorDiscGone, {TextOf(drive.gone)}),
                GetMsg(Msg::DoctorDiscGoneRemedy, {drive.name})};
    if (drive.emulated && PlaceIsTaken(drive))
        return {false, name, GetMsg(Msg::DoctorPlaceTaken, {TextOf(drive.place)}),
                GetMsg(Msg::DoctorPlaceTakenRemedy)};
    const std::string state =
        drive.device.empty() ? GetMsg(Msg::DriveWithoutDisc) : TextOf(drive.device);
    return {true, name, state, {}};
}

} // namespace

void DiscDriveFindings(Session& session, std::vector<Finding>& findings)
{
    const auto drives = ListCdDrives(session.machine, session.programFolder, session.settings);
    for (const CdDrive& drive : drives)
        findings.push_back(FindingOf(drive));
    const Tools tools = ToolsOf(session);
    for (const Tool* const tool : {&FuseIso(), &XorrisoExtract()}) {
        const Path found = FindTool(tools, *tool);
        const std::string name = GetMsg(Msg::DoctorDiscTool, {tool->name});
        if (!found.empty())
            findings.push_back({true, name, TextOf(found), {}});
        else
            findings.push_back({drives.empty(), name, GetMsg(Msg::DoctorDiscToolMissing),
                                InstallHint(tools, *tool)});
    }
}

} // namespace kestrova
