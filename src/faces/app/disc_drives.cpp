#include "app/disc_drives.h"

#include "app/opening.h"
#include "app/result_text.h"
#include "core/size_words.h"
#include "core/text.h"
#include "drives/attached_discs.h"
#include "practice/practice_folder.h"
#include "session/telling.h"
#include "words/discs_commands.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace kestrova
{

namespace
{

std::string_view MediumWord(DiscMedium medium)
{
    switch (medium) {
    case DiscMedium::None:
        return "none";
    case DiscMedium::Blank:
        return "blank";
    case DiscMedium::Written:
        return "written";
    case DiscMedium::Unknown:
        break;
    }
    return "unknown";
}

Message MediumText(DiscMedium medium)
{
    switch (medium) {
    case DiscMedium::None:
        return Msg::DriveWithoutDisc;
    case DiscMedium::Blank:
        return Msg::DriveWithBlank;
    case DiscMedium::Written:
        return Msg::DriveWithDisc;
    case DiscMedium::Unknown:
        break;
    }
    return Msg::DriveUnknown;
}

std::string SizeText(std::uint64_t bytes)
{
    return SizeInWords(static_cast<double>(bytes));
}

Json DriveAsJson(const CdDrive& drive)
{
    return {{"name", drive.name},
            {"model", Readable(drive.model)},
            {"device", Readable(TextOf(drive.device))},
            {"emulated", drive.emulated},
            {"writer", drive.writer},
            {"medium", MediumWord(drive.medium)},
            {"label", Readable(drive.label)},
            {"folder", Readable(TextOf(drive.folder))},
            {"total", drive.total},
            {"free", drive.free}};
}

void AddDrive(Run& run, const CdDrive& drive)
{
    const std::string kind = drive.emulated ? GetMsg(Msg::DriveOfSettings) : OneField(drive.model);
    AddLine(run,
            drive.name + "\t" + kind + "\t" +
                GetMsg(drive.writer ? Msg::DriveWrites : Msg::DriveReads) + "\t" +
                GetMsg(MediumText(drive.medium),
                       {OneField(drive.label),
                        SizeText(drive.medium == DiscMedium::Blank ? drive.free : drive.total)}));
    if (drive.emulated && !drive.device.empty())
        AddLine(run, GetMsg(Msg::DriveHolds, {OneField(TextOf(drive.device))}));
    if (!drive.folder.empty())
        AddLine(run, GetMsg(Msg::DriveSeenIn, {OneField(TextOf(drive.folder))}));
}

/// Says what the drive holds now.
bool ShowChanged(Run& run, const CdDrive& changed)
{
    if (const auto drive = FindCdDrive(run.session.machine, run.session.programFolder,
                                       run.session.settings, changed.name))
        AddDrive(run, *drive);
    return true;
}

} // namespace

std::optional<CdDrive> DriveFromWord(Run& run, const std::string& word)
{
    const auto drives =
        ListCdDrives(run.session.machine, run.session.programFolder, run.session.settings);
    std::vector<std::string> names;
    for (const CdDrive& drive : drives)
        names.push_back(drive.name);
    auto found =
        FindCdDrive(run.session.machine, run.session.programFolder, run.session.settings, word);
    if (!found)
        run.session.host.Tell(Tone::Error,
                              names.empty() ? GetMsg(Msg::NoDriveAtAll)
                                            : GetMsg(Msg::NoSuchDrive, {word, Join(names, ", ")}));
    return found;
}

void AddPracticeDrive(ProgramSettings& settings, const Path& trle)
{
    auto drive = PracticeDrive(trle);
    std::vector<DriveSetting>& drives = settings.drives;
    if (!drive || drives.size() >= mostDriveSettings)
        return;
    const bool known = std::any_of(drives.begin(), drives.end(), [&](const DriveSetting& other) {
        return other.name == drive->name;
    });
    if (!known)
        drives.push_back(std::move(*drive));
}

bool ListDrives(Run& run)
{
    const auto drives =
        ListCdDrives(run.session.machine, run.session.programFolder, run.session.settings);
    if (run.json != nullptr) {
        *run.json = Json::array();
        for (const CdDrive& drive : drives)
            run.json->push_back(DriveAsJson(drive));
        return true;
    }
    for (const CdDrive& drive : drives)
        AddDrive(run, drive);
    if (drives.empty())
        AddLine(run, GetMsg(Msg::NoDriveAtAll));
    return true;
}

bool InsertDisc(Run& run)
{
    if (!OpenToLook(run, Needs::Nothing))
        return false;
    auto drive = DriveFromWord(run, run.arguments.words[1]);
    return drive &&
           DoneOrTold(run.session.host, InsertMedium(ToolsOf(run.session), *drive,
                                                     PlaceFromWord(run.arguments.words[2]))) &&
           ShowChanged(run, *drive);
}

bool EjectDisc(Run& run)
{
    if (!OpenToLook(run, Needs::Nothing))
        return false;
    auto drive = DriveFromWord(run, run.arguments.words[1]);
    return drive &&
           DoneOrTold(run.session.host, MoveDoor(ToolsOf(run.session), run.session.machine, *drive,
                                                 platform::DoorMove::Open)) &&
           ShowChanged(run, *drive);
}

} // namespace kestrova
