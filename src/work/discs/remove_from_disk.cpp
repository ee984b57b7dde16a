#include "discs/remove_from_disk.h"

#include "archive/archive_saving.h"
#include "archive/level_folders.h"
#include "archive/set_aside.h"
#include "core/leftovers.h"
#include "core/look.h"
#include "core/name_list.h"
#include "core/removal.h"
#include "core/staged_file.h"
#include "discs/disc_content.h"
#include "discs/disc_notes.h"
#include "discs/part_of_level.h"
#include "drives/cd_drives.h"
#include "formats/level_folder.h"
#include "formats/trle_folder.h"
#include "history/changed_record.h"
#include "history/changes.h"
#include "history/undo_entries.h"
#include "session/telling.h"
#include "words/archive.h"
#include "words/disc_install.h"

namespace kestrova
{

namespace
{

/// What became of the files of one level.
enum class Leaves { Gone, Stays, DiscMissing, Stopped };

/// What nobody can read tells nothing.
DiscNote KnownOf(const FilesLeaving& leaving)
{
    return ReadDiscNote(leaving.folders.levels).ValueOr({});
}

/// The removal of the files of all levels, one after the other.
class FilesRemoval
{
public:
    explicit FilesRemoval(const FilesLeaving& leaving)
        : at_(leaving), note_(KnownOf(leaving)),
          room_(ChangeWaits(leaving.folders) ? UndoRoom{}
                                             : RoomForUndo(leaving.folders, leaving.settings))
    {
    }

    Leaves Remove(LevelRecord& level, const Heartbeat& beat)
    {
        const auto files =
            FindPath(InFolder(LevelHomeOf(at_.folders, level.levelCode), OnDisk::DirFiles));
        const auto isThere = files ? IsFolder(*files) : Result<bool>{files.Error()};
        if (!isThere) {
            TellFolderNotRead(at_.host, isThere.Error());
            return Leaves::Stopped;
        }
        // What is a part only stays beside its disc, where all of the level lies.
        const NotedLevel* noted = FindNoted(note_, level.cdNumber, level.levelCode);
        if (!*isThere || IsPartOfLevel(*files, noted, level.filesSize))
            return Leaves::Gone;
        const bool isProved = noted != nullptr && noted->verified;
        if (!isProved && !HasDisc(level))
            return Leaves::DiscMissing;
        const Status same =
            isProved ? HoldsNotedFiles(*files, *noted, beat) : ProveNow(level, *files, beat);
        if (!same && same.Error().code == ErrorCode::Stopped)
            return Leaves::Stopped;
        if (!same) {
            stay_.push_back(WhyItStays(level, same.Error()));
            level.cdNumber = 0;
            return Leaves::Stays;
        }
        if (isProved && !HasDisc(level))
            return Leaves::DiscMissing;
        if (!SetFilesAside(level, *files) && !RemoveForGood(*files)) {
            stay_.push_back(GetMsg(Msg::FilesStayNotRemoved, {NameOf(level)}));
            level.cdNumber = 0;
            return Leaves::Stays;
        }
        return Leaves::Gone;
    }

    /// Tells what stays, and notes what was compared.
    void End() const
    {
        if (!stay_.empty())
            at_.host.Tell(Tone::Warning, GetMsg(Msg::FilesStay), {}, ShownLines(stay_));
        if (!proved_.empty())
            DoneOrTold(at_.host, NoteLevels(at_.archive.header, proved_));
    }

private:
    static std::string NameOf(const LevelRecord& level)
    {
        return OnOneLine(Readable(Trim(level.levelName)));
    }

    static std::string WhyItStays(const LevelRecord& level, const Failure& failure)
    {
        const std::string number = std::to_string(level.cdNumber);
        return failure.code == ErrorCode::Differs
                   ? GetMsg(Msg::FilesStayChanged, {NameOf(level), failure.subject, number})
                   : GetMsg(Msg::FilesStayUnverified, {NameOf(level), number});
    }

    /// A copy that nobody compared when its disc was made is compared now.
    Status ProveNow(const LevelRecord& level, const Path& files, const Heartbeat& beat)
    {
        const auto disc = FilesFolderOf(at_.folders, at_.archive, level.levelCode);
        if (!disc)
            return disc.Error();
        auto here = NoteFilesOf(files, beat);
        if (!here)
            return here.Error();
        NotedLevel noted{level.levelCode, true, std::move(*here)};
        if (auto same = HoldsNotedFiles(*disc, noted, beat); !same)
            return same;
        proved_.emplace_back(level.cdNumber, std::move(noted));
        return {};
    }

    /// Its disc, with the level's files on it, can be read now.
    bool HasDisc(const LevelRecord& level)
    {
        const std::string line{lineBreak};
        const auto disc = FilesFolderOf(at_.folders, at_.archive, level.levelCode);
        if (!disc) {
            TellFailure(at_.host, GetMsg(Msg::CdMissingStep2, {line}), disc.Error());
            return false;
        }
        const auto isThere = IsFolder(*disc);
        if (isThere && *isThere)
            return true;
        at_.host.Tell(Tone::Error,
                      GetMsg(Msg::CannotReadDiscFolder, {"\"" + TextOf(*disc) + "\"" + line}));
        return false;
    }

    /// Renames the folder, and notes how it comes back. False when nothing was done.
    bool SetFilesAside(const LevelRecord& level, const Path& files)
    {
        const auto size = FolderSize(files);
        const auto digest = DigestOfAside(files);
        const auto aside = NameForAside(files, at_.machine.NowNs());
        if (room_.count == 0 || !size || !digest || !aside ||
            static_cast<std::uint64_t>(*size) > room_.bytes)
            return false;
        Change change = NewChange({at_.machine, at_.folders, at_.archive, at_.settings},
                                  ChangeKind::FilesLeft, level.levelCode);
        change.subject = std::to_string(level.cdNumber);
        LevelRecord before = level;
        before.cdNumber = 0;
        change.record = ChangedRecord{
            static_cast<std::size_t>(FindLevel(at_.archive, level.levelCode)), before, level};
        change.moved = MovedFolder{files.native(), aside->native(),
                                   static_cast<std::uint64_t>(*size), *digest};
        if (!NoteChange(at_.folders, change))
            return false;
        if (platform::Rename(files, *aside)) {
            DropChange(at_.folders, change);
            return false;
        }
        // A folder that is aside without an entry stays for a person to look at.
        (void)EndChange(at_.folders, at_.settings, change);
        --room_.count;
        room_.bytes -= static_cast<std::uint64_t>(*size);
        return true;
    }

    /// In one step, so that a killed removal leaves something that the next start clears.
    static bool RemoveForGood(const Path& files)
    {
        const Path leaving = StagedNameFor(files);
        NotePlace(files.parent_path());
        if (platform::Rename(files, leaving))
            return false;
        (void)ClearPlace(leaving); // it is a leftover by its name
        return true;
    }

    const FilesLeaving& at_;
    const DiscNote note_;
    UndoRoom room_;
    std::vector<std::pair<std::int32_t, NotedLevel>> proved_; ///< by their discs
    std::vector<std::string> stay_;
};

bool SaveList(const FilesLeaving& leaving)
{
    const Path file = leaving.archive.file;
    const auto status = WriteArchive(leaving.folders, leaving.settings, leaving.archive, file);
    if (!status)
        TellFailure(leaving.host, GetMsg(Msg::ErrorSavingArchive) + TextOf(file), status.Error());
    return bool{status};
}

/// A disc is missing: the files that are here may stay, so that the archive can be used.
bool KeepsTheRest(const FilesLeaving& leaving)
{
    if (!leaving.host.AskYesNo(GetMsg(Msg::AskKeepOnHd)))
        return false;
    const DiscNote note = KnownOf(leaving);
    for (LevelRecord& level : leaving.archive.levels)
        if (const Path files =
                InFolder(LevelHomeOf(leaving.folders, level.levelCode), OnDisk::DirFiles);
            level.cdNumber != 0 && FolderExists(files) &&
            !IsPartOfLevel(files, FindNoted(note, level.cdNumber, level.levelCode),
                           level.filesSize))
            level.cdNumber = 0;
    return true;
}

/// The main folder of an archive on discs is one in the first drive; without any it stays.
void NameFirstDrive(const FilesLeaving& leaving)
{
    const auto drives = ListCdDrives(leaving.machine, leaving.folders.program, leaving.settings);
    if (drives.empty())
        return;
    const CdDrive& first = drives.front();
    const Path place =
        (first.folder.empty() ? first.device : first.folder) / NameOnDiscs(leaving.archive.header);
    if (!place.parent_path().empty() && ToWindows1252(place.native()).size() <= folderFieldSize)
        leaving.archive.header.mainFolder = place.native();
}

} // namespace

bool RemoveFilesFoldersFromHd(const FilesLeaving& leaving)
{
    Archive& archive = leaving.archive;
    const Archive before = archive;
    Leaves last = Leaves::Gone;
    {
        const auto progress =
            leaving.host.BeginProgress(ProgressWindow::Progress, GetMsg(Msg::RemovingFilesFromHd));
        progress->AllowStop();
        FilesRemoval removal{leaving};
        for (std::size_t i = 0; i < archive.levels.size(); ++i) {
            progress->SetBar(i + 1, archive.levels.size());
            if (archive.levels[i].cdNumber == 0 || archive.levels[i].levelCode == originalCode)
                continue;
            last = progress->Step()
                       ? removal.Remove(archive.levels[i], [&] { return progress->Step(); })
                       : Leaves::Stopped;
            if (last == Leaves::DiscMissing || last == Leaves::Stopped)
                break;
        }
        removal.End();
    }
    if (last == Leaves::Stopped || (last == Leaves::DiscMissing && !KeepsTheRest(leaving))) {
        archive = before; // what left is on its disc, and the next load goes on
        return last == Leaves::Stopped;
    }
    NameFirstDrive(leaving);
    FollowDiscs(archive);
    archive.header.cdMovePending = false;
    if (SaveList(leaving))
        return true;
    archive = before;
    return false;
}

} // namespace kestrova
