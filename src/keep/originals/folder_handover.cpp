#include "originals/folder_handover.h"

#include "core/copying.h"
#include "core/look.h"
#include "core/parallel.h"
#include "core/removal.h"
#include "history/swap_journal_file.h"
#include "originals/folder_loan.h"
#include "originals/handover_return.h"
#include "platform/folder_memory.h"
#include "words/originals.h"

#include <atomic>

namespace kestrova
{

namespace
{

/// Room that a disk keeps beside the copies.
constexpr std::uint64_t spareRoom = UINT64_C(64) << 20;

/// The backup holds the file's bytes: it was copied when they were in the file last, which no
/// program can pretend, or both are read.
bool BackupHas(const Folders& folders, const StandingFile& file, const Heartbeat& heartbeat)
{
    const Path original = ResolvePath(folders.Backup() / file.name);
    platform::FileFacts facts;
    if (platform::Look(original, facts) || facts.kind != platform::FileKind::File ||
        facts.size != file.size)
        return false;
    if (facts.modifiedNs == file.modifiedNs && file.changedNs < facts.changedNs)
        return true;
    return SameContent(folders.trle / file.name, original, heartbeat);
}

/// A folder that lies too deep to be looked into could not be kept.
Status CheckDepth(const Path& folder, const StandingTree& tree)
{
    for (const Path& name : tree.others)
        if (!IsUnlisted(name) &&
            platform::FactsOfLink(folder / name).kind == platform::FileKind::Folder)
            return MakeFailure(ErrorCode::CannotRead, TextOf(folder / *name.begin()),
                               std::make_error_code(std::errc::filename_too_long));
    return {};
}

/// Marks what the backup lacks; False when it was stopped.
bool MarkKept(const Folders& folders, StandingTree& tree, ProgressScope& progress)
{
    std::atomic<bool> stopped{false};
    std::atomic<std::size_t> done{0};
    const bool all = RunOnAllCores(
        tree.files.size(),
        [&](std::size_t i) {
            tree.files[i].kept =
                !BackupHas(folders, tree.files[i], [&] { return !stopped.load(); });
            ++done;
        },
        [&] {
            progress.SetBar(done, tree.files.size());
            stopped = !progress.Step();
            return !stopped;
        });
    return all && !stopped;
}

} // namespace

FolderHandover::~FolderHandover()
{
    if (open_)
        (void)GiveBack(); // what fails waits for the next start
}

Status FolderHandover::Begin(ProgressScope& progress)
{
    const platform::FolderMemory memory;
    if (LoanWaits(folders_))
        return Failure{ErrorCode::Refused, TextOf(folders_.trle), GetMsg(Msg::LoanStillWaits)};
    auto mark = MarkOf(folders_.trle);
    if (!mark)
        return mark.Error();
    auto tree = TreeOf(folders_.trle, {true}, [&] { return progress.Step(); });
    if (!tree)
        return tree.Error();
    if (auto known = CheckDepth(folders_.trle, *tree); !known)
        return known;
    note_ = {std::move(*mark), LoanPhase::Planned, {}, {}, {}, std::move(*tree)};
    if (!MarkKept(folders_, *note_.whole, progress))
        return MakeFailure(ErrorCode::Stopped, TextOf(folders_.trle));
    std::uint64_t needed = 0;
    for (const StandingFile& file : note_.whole->files)
        needed += file.kept ? file.size : 0;
    const auto free = machine_.FreeSpace(folders_.program);
    if (free && *free < needed + spareRoom)
        return Failure{ErrorCode::Refused, TextOf(folders_.program),
                       GetMsg(Msg::HandoverNoRoom,
                              {FormatSize(static_cast<double>(needed)), TextOf(folders_.program)})};
    const Path aside = KeptCopyOf(folders_, 0).parent_path();
    if (auto cleared = ClearPlace(aside); !cleared) // without its note it is of no use
        return cleared;
    if (auto written = WriteLoanNote(folders_, note_); !written)
        return written;
    open_ = true;
    auto handed = Keep(progress);
    if (handed) {
        note_.phase = LoanPhase::Lent;
        handed = WriteLoanNote(folders_, note_);
    }
    if (!handed) {
        note_.phase = LoanPhase::Planned;
        (void)GiveBack(); // the failure that counts is the first one
    }
    return handed;
}

Status FolderHandover::Keep(ProgressScope& progress)
{
    const std::vector<StandingFile>& files = note_.whole->files;
    for (std::size_t i = 0; i < files.size(); ++i) {
        if (!files[i].kept)
            continue;
        const Path copy = KeptCopyOf(folders_, i);
        if (auto made = MakeFolders(copy.parent_path()); !made)
            return made;
        CopyOptions options{Verify::Content};
        options.progress = [&](std::uint64_t) { return progress.Step(); };
        options.spelled = true;
        if (auto copied = CopyFileOver(folders_.trle / files[i].name, copy, options); !copied)
            return copied;
        progress.SetBar(i + 1, files.size());
    }
    const auto failure = platform::SyncFileSystem(folders_.program);
    return failure ? Status{MakeFailure(ErrorCode::CannotWrite, TextOf(folders_.program), failure)}
                   : Status{};
}

Result<StandingTree> FolderHandover::Now(const Heartbeat& heartbeat) const
{
    return TreeOf(folders_.trle, {false, note_.whole->links, true}, heartbeat);
}

Status FolderHandover::GiveBack(const std::set<Path>& stays)
{
    open_ = false;
    return ReturnHandover(machine_, folders_, note_, LoanEnd::Whole, stays);
}

} // namespace kestrova
