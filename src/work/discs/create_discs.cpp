#include "discs/create_discs.h"

#include "archive/archive_saving.h"
#include "core/removal.h"
#include "core/text.h"
#include "discs/burn_set.h"
#include "discs/disc_choice.h"
#include "discs/image_set.h"
#include "discs/remove_from_disk.h"
#include "discs/setup_files.h"
#include "formats/program_folder.h"
#include "session/telling.h"
#include "words/disc_creation.h"

namespace kestrova
{

namespace
{

/// Where the discs will be seen: a drive's folder, or its device, or the images' folder.
Result<Path> PlaceOfDiscs(const DiscParts& parts, const DiscChoice& choice)
{
    if (choice.imagesOnly)
        return ResolvePath(choice.images);
    const auto drive = ChosenDrive(parts, choice);
    if (!drive)
        return drive.Error();
    return !drive->folder.empty()  ? drive->folder
           : !drive->place.empty() ? drive->place
                                   : drive->device;
}

bool HaveBlankDiscs(const DiscParts& parts, const DiscPlan& plan)
{
    if (plan.choice.imagesOnly || plan.choice.unattended)
        return true;
    return parts.host.AskYesNo(GetMsg(Msg::HaveBlankDiscs, {std::to_string(plan.Discs().size())}) +
                               TextOfCapacity(plan.choice.megabytes));
}

/// True when it was done; what it was not was told.
bool DoneOrStopped(const DiscParts& parts, const Status& status)
{
    if (!status && status.Error().code == ErrorCode::Stopped)
        parts.host.Tell(Tone::Plain, GetMsg(Msg::DiscsStopped));
    else
        DoneOrTold(parts.host, status);
    return bool{status};
}

bool Prepare(const DiscParts& parts, DiscSet& set, const Path& mainFolder)
{
    parts.progress.AllowStop(); // every file is read
    return DoneOrStopped(parts, set.Prepare(mainFolder));
}

bool MakeDiscs(const DiscParts& parts, DiscSet& set)
{
    return set.Plan().choice.imagesOnly ? DoneOrStopped(parts, MakeImages(parts, set))
                                        : BurnDiscs(parts, set);
}

/// Which levels count as moved: those that were proved, and the others when the person says so.
std::vector<LevelCode> LevelsThatStay(const DiscParts& parts, const DiscSet& set)
{
    const std::vector<LevelCode> unproved = set.Unproved();
    if (unproved.empty() || set.Plan().choice.unattended)
        return unproved;
    const bool count = parts.host.AskYesNo(
        GetMsg(Msg::AskLevelsUnproved,
               {std::to_string(unproved.size()), NamesOf(parts.archive.archive, unproved),
                std::string{lineBreak}}),
        Consent::Explicit);
    return count ? std::vector<LevelCode>{} : unproved;
}

bool WantsRemoval(const DiscParts& parts, const DiscChoice& choice, std::size_t levels)
{
    if (choice.remove)
        return *choice.remove;
    const std::string breaks = std::string{lineBreak} + std::string{lineBreak};
    return parts.host.AskYesNo(
        GetMsg(Msg::AskRemoveFromHd, {std::to_string(levels), breaks, breaks}));
}

/// The end of a set that was made.
bool Finish(const DiscParts& parts, DiscSet& set, const Path& mainFolder)
{
    const std::size_t all = set.Plan().LevelCount();
    parts.host.Tell(all == 0 ? Tone::Warning : Tone::Plain,
                    all == 0 ? GetMsg(Msg::DiscsWithoutLevels, {lineBreak})
                             : GetMsg(Msg::DiscsComplete));
    if (all == 0)
        return true;
    const std::vector<LevelCode> stay = LevelsThatStay(parts, set);
    if (stay.size() == all || !WantsRemoval(parts, set.Plan().choice, all - stay.size()))
        return true;
    const Archive before = parts.archive.archive;
    parts.archive.archive = set.Made(mainFolder, stay);
    parts.archive.archive.header.cdMovePending = true;
    parts.archive.archive.dirty = true;
    if (SaveArchiveNow(parts.archive))
        return true;
    // A write may fail after its file got its name, so the old list is written once more.
    parts.archive.archive = before;
    if (const auto back = WriteArchive(parts.archive, before.file); !back)
        parts.archive.archive.dirty = true;
    return false;
}

/// What goes onto the first disc is found, and the plan is divided by its size.
bool PrepareExtras(const DiscParts& parts, DiscPlan& plan, const Path& temp)
{
    if (plan.choice.setup) {
        auto files = LocateSetupFiles(parts, plan.choice.setupFile, temp);
        if (!files)
            return false;
        plan.choice.setupFiles = std::move(*files);
    }
    const Status measured = MeasureExtras(parts, plan);
    return DoneOrTold(parts.host, measured) && MayDivideSo(parts, plan);
}

bool MakeSet(const DiscParts& parts, const DiscPlan& plan, const Path& temp)
{
    DiscSet set{parts, plan, temp};
    const auto place = PlaceOfDiscs(parts, plan.choice);
    if (!place) {
        TellFailure(parts.host, place.Error());
        return false;
    }
    const Path mainFolder = set.MainFolderIn(*place);
    if (ToWindows1252(mainFolder.native()).size() > folderFieldSize) {
        parts.host.Tell(Tone::Error, GetMsg(Msg::ImagesFolderTooLong));
        return false;
    }
    if (plan.choice.imagesOnly && !DoneOrTold(parts.host, CanTakeImages(parts, set)))
        return false;
    return HaveBlankDiscs(parts, plan) && Prepare(parts, set, mainFolder) &&
           MakeDiscs(parts, set) && Finish(parts, set, mainFolder);
}

} // namespace

Status MeasureExtras(const DiscParts& parts, DiscPlan& plan)
{
    plan.extras = {};
    const auto step = [&] { return parts.progress.Step(); };
    for (const Path& file : plan.choice.setupFiles) {
        const auto size = DiscSizeOf(file, step);
        if (!size)
            return size.Error();
        plan.extras += *size;
    }
    if (plan.choice.trle) {
        parts.progress.SetLabel(GetMsg(Msg::ComputeTrleSize));
        const auto size = DiscSizeOf(parts.folders.trle, step);
        if (!size)
            return size.Error();
        plan.extras += *size;
    }
    plan.Divide();
    return {};
}

bool CreateDiscs(const DiscParts& parts, DiscPlan& plan)
{
    if (!HasArchive(parts.host, parts.archive.archive) || !CheckChoice(parts, plan))
        return false;
    const WorkFolder temp{InFolder(parts.folders.program, OnDisk::DirTempBurn),
                          WorkFolder::Make::Now};
    if (!temp.IsClear()) {
        TellFailure(parts.host, GetMsg(Msg::NoTempFolder), temp.IsClear().Error());
        return false;
    }
    const std::vector<Path> given = plan.choice.setupFiles;
    const bool done =
        PrepareExtras(parts, plan, temp.Folder()) && MakeSet(parts, plan, temp.Folder());
    plan.choice.setupFiles = given; // those that were unpacked go with the folder
    return done;
}

bool MakeArchiveDiscs(Session& session, ProgressScope& progress, DiscPlan& plan)
{
    if (!CreateDiscs(DiscParts{session, progress}, plan))
        return false;
    return !session.archive.header.cdMovePending ||
           RemoveFilesFoldersFromHd({session, session.archive});
}

} // namespace kestrova
