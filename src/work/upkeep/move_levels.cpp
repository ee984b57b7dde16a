#include "upkeep/move_levels.h"

#include "archive/archive_entries.h"
#include "archive/archive_saving.h"
#include "archive/level_folders.h"
#include "core/copying.h"
#include "core/look.h"
#include "core/name_list.h"
#include "core/parallel.h"
#include "core/whole_tree.h"
#include "formats/level_folder.h"
#include "history/moved_homes.h"
#include "session/held_folders.h"
#include "session/telling.h"
#include "swap/unfinished_move.h"
#include "words/archive.h"
#include "words/moving.h"

namespace kestrova
{

namespace
{

Result<WholeTree> ScanLevels(const Path& folder, const Heartbeat& heartbeat)
{
    const auto names = NamesOfArchive(folder);
    return names ? ScanWhole(folder, *names, heartbeat) : names.Error();
}

/// What a copy to another disk may still lose is on that disk when it answers.
Status FlushDisk(const Path& folder, const Heartbeat& heartbeat)
{
    std::error_code failure;
    // Flushing takes as long as the disk does; the window stays alive meanwhile.
    RunOnAllCores(
        1, [&](std::size_t) { failure = platform::SyncFileSystem(folder); },
        [&] { return heartbeat(), true; });
    return failure ? MakeFailure(ErrorCode::CannotWrite, TextOf(folder), failure) : Status{};
}

/// The folders that every level has, where one was lost.
Status MakeLostFolders(const Archive& archive, const Path& to)
{
    for (const LevelRecord& level : archive.levels) {
        const Path home = InFolder(to, LevelFolderName(level.levelCode));
        if (level.levelCode == originalCode || !FolderExists(home))
            continue;
        for (const std::string_view part :
             {OnDisk::DirScreenshots, OnDisk::DirSavegames, OnDisk::DirBackupSavegames})
            if (auto made = MakeFolder(InFolder(home, part)); !made)
                return made;
    }
    return {};
}

/// One move, step by step.
class ArchiveMove
{
public:
    ArchiveMove(const ArchiveParts& parts, Path to)
        : parts_(parts), from_(parts.folders.levels), to_(std::move(to))
    {
    }

    bool Run(const WholeTree& tree)
    {
        const auto begun = Begin();
        auto copied = begun ? Copy(tree) : begun;
        if (!copied)
            return GiveUp(copied.Error());
        if (!SaveList())
            return false;
        const bool ended = FollowHomes() && ClearOld(tree);
        return DoneOrTold(parts_.host, HoldArchiveFolder(parts_.locks, parts_.folders, to_)) &&
               ended;
    }

private:
    Status Begin()
    {
        const auto isThere = IsFolder(to_);
        if (!isThere)
            return isThere.Error();
        note_ = {parts_.archive.file.native(), from_.native(), to_.native(), !*isThere};
        if (auto noted = WriteMoveNote(parts_.folders, note_); !noted)
            return noted;
        noted_ = true;
        if (auto made = MakeFolders(to_); !made)
            return made;
        return HoldFolder(parts_.locks, to_);
    }

    Status Copy(const WholeTree& tree)
    {
        const auto progress =
            parts_.host.BeginProgress(ProgressWindow::Progress, GetMsg(Msg::MovingFolders));
        progress->AllowStop();
        const Heartbeat beat = [&] { return progress->Step(); };
        auto status =
            CopyWhole(tree, ResolvePath(from_), ResolvePath(to_), [&](std::uint64_t done) {
                progress->SetBar(done, tree.bytes);
                return progress->Step();
            });
        if (!status)
            return status;
        progress->SetLabel(GetMsg(Msg::MakingSubfolders));
        if (status = MakeLostFolders(parts_.archive, to_); !status)
            return status;
        if (status = FlushDisk(ResolvePath(to_), beat); !status)
            return status;
        const auto now = ScanLevels(ResolvePath(from_), beat);
        if (!now)
            return now.Error();
        const auto whole = IsWholeCopy(tree, *now, ResolvePath(from_), ResolvePath(to_), beat);
        if (!whole)
            return whole.Error();
        if (!*whole)
            return InWords(ErrorCode::Differs, GetMsg(Msg::MoveChangedMeanwhile));
        return progress->Step() ? Status{} : MakeFailure(ErrorCode::Stopped, {});
    }

    bool GiveUp(const Failure& failure)
    {
        const auto wait =
            parts_.host.BeginProgress(ProgressWindow::Wait, GetMsg(Msg::ClearingCopy));
        const auto stayed = noted_ ? TakeMoveBack(parts_.folders, parts_.locks, note_,
                                                  [&] { return wait->Step(), true; })
                                   : Result<std::vector<Path>>{std::vector<Path>{}};
        if (parts_.locks.ArchiveFolder() != to_)
            parts_.locks.Release(to_);
        if (failure.code != ErrorCode::Stopped)
            TellFailure(parts_.host,
                        GetMsg(Msg::MoveErrorCopying) + ". " + GetMsg(Msg::MoveNothingChanged),
                        failure);
        if (!stayed)
            TellFailure(parts_.host, GetMsg(Msg::MoveErrorRemoving) + TextOf(to_), stayed.Error());
        return false;
    }

    /// From here on the new folder counts.
    bool SaveList()
    {
        const Archive before = parts_.archive;
        ArchiveHeader& header = parts_.archive.header;
        if (Trim(header.mainFolder) == Trim(header.secondaryFolder))
            header.mainFolder = to_.native();
        header.secondaryFolder = to_.native();
        const auto written = WriteArchive(parts_, before.file);
        if (written)
            return true;
        TellFailure(parts_.host, GetMsg(Msg::ErrorSavingArchive) + TextOf(before.file),
                    written.Error());
        parts_.archive = before;
        // The write may have failed after its file got its name: the old list must stand for sure
        // before the copy goes, and otherwise the next start looks which one does.
        if (WriteArchive(parts_, before.file))
            return GiveUp(MakeFailure(ErrorCode::Stopped, {}));
        parts_.host.Tell(Tone::Warning, GetMsg(Msg::MoveNotEnded, {TextOf(to_)}));
        return false;
    }

    bool FollowHomes()
    {
        const auto followed = FollowMovedHomes(parts_.folders, from_, to_);
        if (!followed)
            TellFailure(parts_.host, GetMsg(Msg::MoveNotEnded, {TextOf(to_)}), followed.Error());
        return bool{followed};
    }

    bool ClearOld(const WholeTree& tree)
    {
        const auto progress =
            parts_.host.BeginProgress(ProgressWindow::Progress, GetMsg(Msg::RemovingOldFolders));
        const auto stayed = ClearOldFolder(parts_.host, parts_.folders, parts_.locks, note_, &tree,
                                           [&] { return progress->Step(), true; });
        if (!stayed) {
            TellFailure(parts_.host, GetMsg(Msg::MoveNotEnded, {TextOf(to_)}), stayed.Error());
            return false;
        }
        if (stayed->empty())
            return true;
        std::vector<std::string> names;
        for (const Path& path : *stayed)
            names.push_back(TextOf(path));
        parts_.host.Tell(Tone::Warning, GetMsg(Msg::MoveOldStays, {ShownNames(names)}));
        return true;
    }

    const ArchiveParts& parts_;
    const Path from_;
    const Path to_;
    MoveNote note_;
    bool noted_ = false;
};

} // namespace

Result<WholeTree> ScanArchiveFolder(Host& host, const Path& folder)
{
    const auto progress =
        host.BeginProgress(ProgressWindow::Wait, GetMsg(Msg::LookingThroughLevels));
    progress->AllowStop();
    return ScanLevels(ResolvePath(folder), [&] { return progress->Step(); });
}

bool MoveLevels(const ArchiveParts& parts, const WholeTree& tree, const Path& to)
{
    return ArchiveMove{parts, to}.Run(tree);
}

} // namespace kestrova
