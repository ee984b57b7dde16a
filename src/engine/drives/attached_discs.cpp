#include "drives/attached_discs.h"

#include "core/look.h"
#include "drives/file_names.h"
#include "drives/inserted_medium.h"
#include "drives/mounted_disc.h"
#include "drives/seen_discs.h"
#include "platform/places.h"
#include "words/drives.h"

#include <algorithm>

namespace kestrova
{

namespace
{

Result<Path> MountReal(const Tools& tools, const CdDrive& drive)
{
    if (!drive.folder.empty())
        return drive.folder;
    if (const Path folder = FolderOfMounted(drive.device); !folder.empty())
        return folder;
    const auto folder = MountByDesktop(tools, drive.device);
    if (!folder)
        return InWords(ErrorCode::NotDone,
                       GetMsg(Msg::DiscNotMounted, {drive.name, TextOf(drive.device)}),
                       folder.Error().reason, folder.Error().details);
    return folder;
}

/// What a file has to be to lie in a drive. `isNew`: it is not there, and a blank disc then.
Status CheckMedium(const CdDrive& drive, const Path& image, bool& isNew)
{
    platform::FileFacts facts;
    if (const auto failure = platform::Look(image, facts))
        return MakeFailure(ErrorCode::CannotRead, TextOf(image), failure);
    isNew = facts.kind == platform::FileKind::Missing;
    if (!isNew && facts.kind != platform::FileKind::File)
        return InWords(ErrorCode::Refused, GetMsg(Msg::DiscImageNone, {TextOf(image)}));
    if (facts.size == 0 && !drive.writer)
        return isNew ? InWords(ErrorCode::Missing, GetMsg(Msg::DiscImageMissing, {TextOf(image)}))
                     : InWords(ErrorCode::Refused, GetMsg(Msg::DriveDoesNotWrite, {drive.name}));
    platform::DiscHead head;
    if (facts.size > 0 && platform::ReadDiscHead(image, head))
        return InWords(ErrorCode::Damaged, GetMsg(Msg::DiscImageNone, {TextOf(image)}));
    return {};
}

/// The file lies in the drive afterwards; a new one is a blank disc.
Status PutIn(const Path& programFolder, const std::string& drive, const Path& file, bool isNew)
{
    if (isNew) {
        platform::File blank;
        if (const auto failure = platform::File::CreateNew(file, blank))
            return MakeFailure(ErrorCode::CannotWrite, TextOf(file), failure);
    }
    const Status noted = NoteInserted(programFolder, drive, file);
    if (!noted && isNew)
        (void)platform::Unlink(file); // nothing was written on it
    return noted;
}

} // namespace

Result<Path> AttachDisc(const Tools& tools, Machine& machine, Host& host, CdDrive& drive)
{
    if (drive.medium == DiscMedium::None)
        return InWords(ErrorCode::Missing, GetMsg(Msg::DiscDriveEmpty, {drive.name}));
    if (drive.medium == DiscMedium::Blank)
        return InWords(ErrorCode::Missing, GetMsg(Msg::DiscDriveBlank, {drive.name}));
    auto folder = drive.emulated
                      ? ShowDisc(tools, machine, host,
                                 {SeenKeyOfDrive(drive.name), drive.device, drive.place,
                                  GetMsg(Msg::DiscPlaceTaken, {drive.name, TextOf(drive.place)})})
                      : MountReal(tools, drive);
    if (folder)
        drive.folder = *folder;
    return folder;
}

Result<Path> AttachImage(const Tools& tools, Machine& machine, Host& host, const Path& image)
{
    const Path file = platform::AbsolutePath(ResolvePath(image));
    const std::string key = SeenKeyOfImage(file);
    const Path place =
        InFolder(InFolder(tools.programFolder, OnDisk::DirSeen) / key, OnDisk::FragSeenDisc);
    return ShowDisc(tools, machine, host,
                    {key, file, place, GetMsg(Msg::DiscPlaceUnusable, {TextOf(place)})});
}

std::vector<Path> FoldersOfDiscs(const Tools& tools, Machine& machine, Host& host,
                                 const ProgramSettings& settings)
{
    std::vector<Path> folders = machine.Discs();
    for (CdDrive& drive : ListCdDrives(machine, tools.programFolder, settings))
        if (drive.medium == DiscMedium::Written)
            if (const auto folder = AttachDisc(tools, machine, host, drive);
                folder && std::find(folders.begin(), folders.end(), *folder) == folders.end())
                folders.push_back(*folder);
    return folders;
}

Status DetachDisc(const Tools& tools, CdDrive& drive)
{
    const Status done = drive.emulated ? HideDisc(tools, SeenKeyOfDrive(drive.name), true)
                                       : UnmountByDesktop(tools, drive.device);
    if (done)
        drive.folder.clear();
    return done;
}

std::vector<std::string> DetachAll(const Tools& tools)
{
    std::vector<std::string> words;
    for (const std::string& key : SeenKeys(tools.programFolder))
        if (const auto done = HideDisc(tools, key, false); !done && !done.Error().sentence.empty())
            words.push_back(done.Error().sentence);
    return words;
}

Status InsertMedium(const Tools& tools, CdDrive& drive, const Path& image)
{
    if (!drive.emulated)
        return InWords(ErrorCode::Refused, GetMsg(Msg::DriveIsReal, {drive.name}));
    const Path file = image.empty() ? image : platform::AbsolutePath(ResolvePath(image));
    bool isNew = false;
    if (!file.empty()) {
        const std::string other = DriveHolding(tools.programFolder, file, drive.name);
        if (!other.empty())
            return InWords(ErrorCode::Refused,
                           GetMsg(Msg::DriveHoldsThatDisc, {TextOf(file), other}));
        if (const auto ready = CheckMedium(drive, file, isNew); !ready)
            return Saying(GetMsg(Msg::DriveNotChanged, {drive.name}), ready);
    }
    if (const auto hidden = DetachDisc(tools, drive); !hidden)
        return Saying(GetMsg(Msg::DriveNotChanged, {drive.name}), hidden);
    return Saying(GetMsg(Msg::DriveNotChanged, {drive.name}),
                  PutIn(tools.programFolder, drive.name, file, isNew));
}

Status MoveDoor(const Tools& tools, Machine& machine, CdDrive& drive, platform::DoorMove move)
{
    const bool opens = move == platform::DoorMove::Open;
    if (drive.emulated)
        return opens ? InsertMedium(tools, drive, {}) : Status{};
    if (opens)
        if (const auto hidden = DetachDisc(tools, drive); !hidden)
            return hidden;
    return Saying(GetMsg(Msg::DriveDoorStuck, {drive.name}), machine.MoveDoor(drive.device, move));
}

} // namespace kestrova
