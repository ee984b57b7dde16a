#include "burning/burn_cd.h"

#include "burning/disc_burning.h"
#include "burning/disc_reports.h"
#include "burning/file_names.h"
#include "burning/image_making.h"
#include "core/file_kinds.h"
#include "core/files.h"
#include "core/staged_file.h"
#include "core/text.h"
#include "formats/cd_install_text.h"
#include "formats/sectors.h"
#include "platform/places.h"
#include "words/burning.h"

#include <cmath>

namespace kestrova
{

BurnCd::BurnCd(Host& host, Machine& machine, const Tools& tools, const ProgramSettings& drives)
    : host_(host), machine_(machine), tools_(tools), drives_(drives)
{
}

bool BurnCd::Fail(std::string title, std::string detail, BurnCode code)
{
    error.title = std::move(title);
    error.detail = std::move(detail);
    error.code = code;
    return false;
}

Status BurnCd::LastStatus() const
{
    if (error.code == BurnCode::Stopped)
        return Failure{ErrorCode::Stopped};
    if (!failed_)
        return {};
    return InWords(ErrorCode::NotDone, error.title + ": " + error.detail, {}, error.output);
}

bool BurnCd::Add(const BurnItem& item)
{
    error = {};
    failed_ = !Take(AddItem(settings, item));
    return !failed_;
}

bool BurnCd::Command(CwCommand command, const std::string& argument1, const std::string& argument2)
{
    error = {};
    result = {};
    failed_ = !Run(command, argument1, argument2);
    return !failed_;
}

bool BurnCd::Run(CwCommand command, const std::string& argument1, const std::string& argument2)
{
    switch (command) {
    case CwCommand::MakeImage:
        return MakeImage();
    case CwCommand::BurnImage:
        return BurnImageFile(tools_, settings, ImagePath(), error);
    case CwCommand::BurnWithoutImage:
        return BurnThroughPipe(tools_, settings, error);
    case CwCommand::Blank:
        return BlankDisc(tools_, settings, argument1, error);
    case CwCommand::Size:
    case CwCommand::SizeImageKept:
        return TellOfSize(command);
    case CwCommand::Reset:
        return Reset(argument1);
    case CwCommand::AddItem:
        return Take(AddItemText(settings, argument1));
    case CwCommand::AddNoItem:
        return Take(AddNoItem(settings, argument1));
    case CwCommand::RemoveItem:
        return Take(RemoveItem(settings, argument1));
    case CwCommand::RemoveNoItem:
        return Take(RemoveNoItem(settings, argument1));
    case CwCommand::ListFolder:
    case CwCommand::ScanFolder:
    case CwCommand::FolderBytes:
        return TellOfFolder(command, argument1);
    case CwCommand::AbsolutePath:
    case CwCommand::RelativePath:
        return TellOfItem(command, argument1);
    case CwCommand::DefaultImagePath:
        result.path = tools_.programFolder / OnDisk::ImageName;
        return true;
    case CwCommand::DeleteImage:
        result.path = ImagePath();
        return Take(DeleteFile(result.path), GetMsg(Msg::BurnImageNotDeleted));
    case CwCommand::RelativePathOfFile:
        result.text = PlaceOfFile(settings, argument1);
        return !result.text.empty() ||
               Fail(GetMsg(Msg::BurnItemNotFound), GetMsg(Msg::BurnItemUnknown, {argument1}));
    case CwCommand::AddAutoRunInf:
        return AddAutoRun(argument1, argument2);
    case CwCommand::ReportImage:
        return ReportImage(tools_, settings, ImagePath(), argument1, result.files, result.text,
                           error);
    case CwCommand::ReportItems:
        return ReportItems(settings, argument1, result.text, error);
    case CwCommand::FindWriter:
        return FindWriter(Parts(), settings, result.text, error.title, error);
    case CwCommand::VerifyCd:
        return VerifyCd(Parts(), settings, argument1, error);
    case CwCommand::OpenDoor:
        return MoveCdDoor(Parts(), argument1, platform::DoorMove::Open, error);
    case CwCommand::CloseDoor:
        return MoveCdDoor(Parts(), argument1, platform::DoorMove::Shut, error);
    case CwCommand::LargestDrive:
    case CwCommand::FreeSpaceOnUnit:
        return TellOfRoom(command, argument1);
    }
    return false;
}

DriveParts BurnCd::Parts() const
{
    return {host_, machine_, tools_, drives_};
}

bool BurnCd::AddAutoRun(const std::string& program, const std::string& option)
{
    BurnItem item = ItemFromText(program);
    const auto fail = [&](std::string detail) {
        return Fail(GetMsg(Msg::AutoRunArgumentNotValid), std::move(detail));
    };
    if (item.source.empty() || !item.source.is_absolute())
        return fail(GetMsg(Msg::AutoRunArgument));
    if (item.target.empty() || item.target.ends_with('/'))
        item.target += item.source.filename().native();
    const Path file = tools_.programFolder / OnDisk::AutoRunFile;
    if (const Status written = WriteWholeFile(file, FormatAutoRun(TargetText(item))); !written)
        return Take(written, GetMsg(Msg::AutoRunArgumentNotValid));
    if (!Take(AddItem(settings, {{}, file})))
        return false;
    return EqualNames(option, OnDisk::NotAddFile) || Take(AddItem(settings, std::move(item)));
}

bool BurnCd::Take(const Refusal& refusal)
{
    return refusal.IsNone() || Fail(refusal.title, refusal.detail);
}

bool BurnCd::Take(const Status& status, std::string title)
{
    if (!status) {
        error = ErrorFrom(status.Error(), Msg::BurnPathNotExist, BurnCode::None, BurnCode::None);
        error.title = std::move(title);
    }
    return bool{status};
}

bool BurnCd::MakeImage()
{
    if (settings.progress != nullptr)
        settings.progress->SetLabel(GetMsg(Msg::BurnLabelImage));
    result.path = ImagePath();
    auto making = ImageMaking::Start(tools_, settings, result.path);
    const Status made = making ? (*making)->Finish(settings) : Status{making.Error()};
    if (!made) {
        error = ErrorFrom(made.Error(), Msg::BurnImageFailedTitle, BurnCode::ImageFailed);
        return false;
    }
    error.output = (*making)->Output();
    error.detail = (*making)->Warning();
    if (!error.detail.empty())
        error.title = GetMsg(Msg::BurnImageWarningTitle);
    return true;
}

bool BurnCd::TellOfSize(CwCommand command)
{
    constexpr double perSector = 11.3;
    if (settings.progress != nullptr)
        settings.progress->SetLabel(GetMsg(Msg::BurnLabelSize));
    const auto bytes = ImageSize(tools_, settings);
    if (!bytes) {
        error = ErrorFrom(bytes.Error(), Msg::BurnImageFailedTitle, BurnCode::ImageFailed);
        return false;
    }
    result.bytes = command == CwCommand::SizeImageKept ? *bytes * 2 : *bytes;
    const std::uint64_t sectors = result.bytes / discSector;
    result.size = std::round(static_cast<double>(sectors) * perSector);
    return true;
}

Path BurnCd::ImagePath() const
{
    return settings.image.empty() ? tools_.programFolder / OnDisk::ImageName
                                  : platform::AbsolutePath(settings.image);
}

bool BurnCd::Reset(const std::string& speed)
{
    const int last = settings.speed;
    settings = {};
    settings.speed =
        EqualNames(speed, OnDisk::SpeedAuto) ? 0 : WholeNumber<int>(speed).value_or(last);
    return true;
}

bool BurnCd::TellOfFolder(CwCommand command, const std::string& folder)
{
    if (!FolderExists(folder))
        return Fail(GetMsg(Msg::BurnPathNotExist), GetMsg(Msg::BurnNotAFolder));
    const auto keep = [&](const std::vector<Path>& files) {
        for (const Path& file : files)
            result.names.push_back(TextOf(file));
        return true;
    };
    Status status;
    if (command == CwCommand::FolderBytes) {
        const auto size = FolderSize(folder);
        if (size)
            result.size = *size;
        status = StatusOf(size);
    } else if (command == CwCommand::ListFolder) {
        const auto files = ListFiles(folder, OnDisk::PatAllFiles);
        status = StatusOf(files);
        if (files)
            keep(*files);
    } else {
        const auto tree = ScanTree(folder, Heart());
        status = StatusOf(tree);
        if (tree)
            keep(tree->files);
    }
    return Take(status, GetMsg(Msg::BurnPathNotExist));
}

Heartbeat BurnCd::Heart() const
{
    return [progress = settings.progress] { return progress == nullptr || progress->Step(); };
}

bool BurnCd::TellOfItem(CwCommand command, const std::string& text)
{
    const std::string title = GetMsg(Msg::BurnItemNotFound);
    if (text.empty())
        return Fail(title, GetMsg(Msg::BurnNullArgument));
    if (command == CwCommand::AbsolutePath) {
        result.text = TextOf(ItemFromText(text).source);
        return true;
    }
    const BurnItem* const item = FindItem(settings, text);
    if (item == nullptr)
        return Fail(title, GetMsg(Msg::BurnItemUnknown, {text}));
    result.text = TargetText(*item);
    return true;
}

bool BurnCd::TellOfRoom(CwCommand command, const std::string& unit)
{
    if (command == CwCommand::LargestDrive) {
        const Drive drive = FindLargestDrive(machine_);
        result.path = drive.folder;
        result.bytes = drive.free;
        return !drive.folder.empty();
    }
    const auto room = machine_.FreeSpace(unit);
    if (!FolderExists(unit) || !room)
        return Fail(GetMsg(Msg::BurnPathNotExist), GetMsg(Msg::BurnUnitUnknown));
    result.bytes = *room;
    return true;
}

} // namespace kestrova
