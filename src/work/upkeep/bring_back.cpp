#include "upkeep/bring_back.h"

#include "archive/archive_saving.h"
#include "archive/level_folders.h"
#include "archive/level_sizes.h"
#include "core/look.h"
#include "discs/disc_notes.h"
#include "formats/level_folder.h"
#include "session/operation.h"
#include "session/telling.h"
#include "upkeep/level_from_disc.h"
#include "upkeep/move_archive.h"
#include "upkeep/move_levels.h"
#include "upkeep/move_target.h"
#include "words/archive.h"
#include "words/moving.h"

#include <algorithm>

namespace kestrova
{

namespace
{

double BytesOnDiscs(const Archive& archive)
{
    double bytes = 0;
    for (const LevelRecord& level : archive.levels)
        if (level.cdNumber != 0)
            bytes += std::max(0, level.filesSize);
    return bytes;
}

/// Levels on discs by their places in the list, disc after disc.
std::vector<std::size_t> OnDiscs(const Archive& archive)
{
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < archive.levels.size(); ++i)
        if (archive.levels[i].cdNumber != 0)
            places.push_back(i);
    std::stable_sort(places.begin(), places.end(), [&](std::size_t one, std::size_t other) {
        return archive.levels[one].cdNumber < archive.levels[other].cdNumber;
    });
    return places;
}

/// What the record of the archive says once no level lies on a disc.
void CountDiscs(ArchiveHeader& header, const std::vector<LevelRecord>& levels)
{
    header.cdCount = 0;
    for (const LevelRecord& level : levels)
        header.cdCount = std::max(header.cdCount, level.cdNumber);
    if (header.cdCount > 0)
        return;
    header.mainFolder = header.secondaryFolder;
    header.cdMovePending = false;
}

/// Copies levels, and lets those count that are durable.
class BringingBack
{
public:
    BringingBack(const ArchiveParts& parts, DiscNote note)
        : parts_(parts), note_(std::move(note)), places_(OnDiscs(parts.archive)),
          total_(BytesOnDiscs(parts.archive))
    {
    }

    bool Run()
    {
        progress_ =
            parts_.host.BeginProgress(ProgressWindow::Progress, GetMsg(Msg::CopyingFromDiscs));
        progress_->AllowStop();
        bool all = true;
        for (const std::size_t place : places_) {
            const LevelRecord& level = parts_.archive.levels[place];
            if (!waiting_.empty() && (level.cdNumber != disc_ || waitingBytes_ > mostWaiting))
                if (!Count())
                    return false;
            disc_ = level.cdNumber;
            const auto taken = Take(level);
            if (taken) {
                waiting_.push_back(place);
                waitingBytes_ += std::max(0, level.filesSize);
                done_ += std::max(0, level.filesSize);
                continue;
            }
            all = false;
            TellFailure(parts_.host, taken.Error());
            if (!GoesOn(taken.Error()))
                break;
        }
        const bool counted = Count();
        progress_.reset();
        return counted && all;
    }

private:
    static constexpr double mostWaiting = 256.0 * (1 << 20);

    /// Another level may be readable where this one is not.
    static bool GoesOn(const Failure& failure)
    {
        return failure.code == ErrorCode::Damaged || failure.code == ErrorCode::CannotRead ||
               failure.code == ErrorCode::Differs;
    }

    Status Take(const LevelRecord& level)
    {
        const Folders& folders = parts_.folders;
        const Path home = LevelHomeOf(folders, level.levelCode);
        const Path files = InFolder(home, OnDisk::DirFiles);
        const NotedDisc* disc = note_.Find(level.cdNumber);
        const NotedLevel* noted = disc != nullptr ? disc->Find(level.levelCode) : nullptr;
        // A level whose files are all here needs its disc no more.
        if (noted != nullptr && FolderExists(files) &&
            HoldsNotedFiles(files, *noted, [&] { return progress_->Step(); }))
            return {};
        // What lies there is compared as it is copied, and not before; the disc is asked for when
        // it lies nowhere.
        auto source = FilesFolderOf(folders, parts_.archive, level.levelCode, DiscWish::Look);
        if (!source)
            source = FilesFolderOf(folders, parts_.archive, level.levelCode);
        if (!source)
            return Saying(GetMsg(Msg::BringBackCdMissing),
                          Failure{ErrorCode::Missing, source.Error().subject,
                                  source.Error().reason.empty() ? source.Error().sentence
                                                                : source.Error().reason});
        if (auto made = MakeLevelSubfolders(home); !made)
            return made;
        std::vector<Path> replaced;
        auto copied = CopyLevelFromDisc(
            *source, files, noted, [&](std::uint64_t bytes) { return Shows(level, bytes); },
            replaced);
        for (const Path& aside : replaced)
            parts_.host.Tell(Tone::Warning, GetMsg(Msg::ReplacedByDisc, {TextOf(aside)}));
        if (copied || copied.Error().code == ErrorCode::Stopped)
            return copied;
        if (copied.Error().code == ErrorCode::Damaged)
            return Saying(GetMsg(Msg::BringBackDamaged,
                                 {std::to_string(level.cdNumber), Readable(Trim(level.levelName))}),
                          copied.Error());
        return Saying(GetMsg(Msg::BringBackErrorCopying, {TextOf(*source)}) + TextOf(files) + "]",
                      copied.Error());
    }

    /// False when it is to stop.
    bool Shows(const LevelRecord& level, std::uint64_t bytes)
    {
        // The list's sizes may be old ones.
        const auto ofLevel = std::min<std::uint64_t>(
            bytes, static_cast<std::uint64_t>(std::max(0, level.filesSize)));
        progress_->SetBar(static_cast<std::uint64_t>(done_) + ofLevel,
                          static_cast<std::uint64_t>(total_));
        return progress_->Step();
    }

    /// The levels whose files were copied count as being on the hard disk, once they are durable.
    bool Count()
    {
        if (waiting_.empty())
            return true;
        const Path folder = ResolvePath(parts_.folders.levels);
        if (const auto failure = platform::SyncFileSystem(folder)) {
            TellFailure(parts_.host, GetMsg(Msg::MoveErrorCopying),
                        MakeFailure(ErrorCode::CannotWrite, TextOf(folder), failure));
            return false;
        }
        const Archive before = parts_.archive;
        for (const std::size_t place : waiting_) {
            LevelRecord& level = parts_.archive.levels[place];
            level.cdNumber = 0;
            const auto size = FolderSize(
                InFolder(LevelHomeOf(parts_.folders, level.levelCode), OnDisk::DirFiles));
            if (size)
                CountLevelSize(parts_.archive, *size - level.filesSize, SizeKind::Files, place);
        }
        CountDiscs(parts_.archive.header, parts_.archive.levels);
        waiting_.clear();
        waitingBytes_ = 0;
        const auto written = WriteArchive(parts_, before.file);
        if (written)
            return true;
        TellFailure(parts_.host, GetMsg(Msg::ErrorSavingArchive) + TextOf(before.file),
                    written.Error());
        parts_.archive = before;
        (void)WriteArchive(parts_, before.file); // the files are there in either case
        return false;
    }

    const ArchiveParts parts_;
    const DiscNote note_;
    const std::vector<std::size_t> places_;
    const double total_;
    std::unique_ptr<ProgressScope> progress_;
    std::vector<std::size_t> waiting_; ///< copied, and not durable yet
    double waitingBytes_ = 0;
    double done_ = 0;
    std::int32_t disc_ = 0;
};

/// The archive's folder goes to the folder that was said, or where all has room. False when it
/// could not, or when the person gave up.
bool MoveToRoom(const ArchiveParts& parts, const Path& said)
{
    const Path from = parts.folders.levels;
    const double needed = BytesOnDiscs(parts.archive);
    if (said.empty() || IsSameFolder(said, from)) {
        const auto free = parts.machine.FreeSpace(from);
        if (!free)
            return DoneOrTold(parts.host, free.Error());
        if (static_cast<double>(*free) > needed)
            return true;
        if (!parts.host.AskYesNo(GetMsg(Msg::AskOtherUnit, {lineBreak})))
            return false;
    }
    const auto tree = ScanArchiveFolder(parts.host, from);
    if (!tree)
        return tree.Error().code != ErrorCode::Stopped &&
               TellFolderNotRead(parts.host, tree.Error());
    const Path wanted = IsSameFolder(said, from) ? Path{} : said;
    const auto to = ChooseTarget(parts.host, parts.machine, {parts.folders, *tree, needed}, wanted);
    return to && MoveLevels(parts, *tree, *to);
}

} // namespace

bool MoveArchiveToHd(Session& session, const Path& target)
{
    const Operation operation{session};
    if (!MayMoveArchive(session))
        return false;
    if (OnDiscs(session.archive).empty()) {
        session.host.Tell(Tone::Plain, GetMsg(Msg::BringBackNothing));
        return true;
    }
    if (!MoveToRoom(session, target))
        return false;
    auto note = ReadDiscNote(session.Folders().levels);
    if (!note && note.Error().code != ErrorCode::Damaged)
        return DoneOrTold(session.host, note.Error());
    const std::size_t before = OnDiscs(session.archive).size();
    // A damaged note proves nothing; the copies are compared with the discs all the same.
    const bool all = BringingBack{session, note ? std::move(*note) : DiscNote{}}.Run();
    const std::size_t left = OnDiscs(session.archive).size();
    if (!all && left > 0)
        session.host.Tell(Tone::Warning, GetMsg(Msg::BringBackSome, {std::to_string(before - left),
                                                                     std::to_string(left)}));
    session.list.Refresh();
    return all;
}

} // namespace kestrova
