#include "originals/folder_handover.h"

#include "core/removal.h"
#include "history/swap_journal_file.h"
#include "originals/folder_loan.h"
#include "originals/handover_return.h"
#include "originals/tree_keeping.h"
#include "platform/folder_memory.h"
#include "words/originals.h"

namespace kestrova
{

namespace
{

/// What an installer writes needs room as well.
constexpr std::uint64_t spareRoom = UINT64_C(64) << 20;

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
    if (!MarkWhatBackupLacks(folders_, *note_.whole, progress))
        return MakeFailure(ErrorCode::Stopped, TextOf(folders_.trle));
    if (auto fits = RoomForKept(machine_, BytesOfKept(*note_.whole), folders_.program, spareRoom);
        !fits)
        return fits;
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
        if (auto copied = CopyKept(folders_.trle, files[i], KeptCopyOf(folders_, i), progress);
            !copied)
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
