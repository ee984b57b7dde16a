#include "swap/swap_run.h"

#include "archive/level_folders.h"
#include "core/activity_log.h"
#include "core/copying.h"
#include "core/file_kinds.h"
#include "core/look.h"
#include "core/name_list.h"
#include "formats/trle_folder.h"
#include "history/swap_journal_file.h"
#include "originals/vault.h"
#include "session/telling.h"
#include "swap/backup.h"
#include "swap/file_names.h"
#include "swap/live_state.h"
#include "swap/placements.h"
#include "words/restore.h"
#include "words/swap.h"

#include <algorithm>
#include <set>

namespace kestrova
{

namespace
{

/// A script or language file of the root.
bool IsScript(const std::string& name)
{
    return EndsWithName(name, OnDisk::EndingDat) && name.find_last_of('\\') == 0;
}

} // namespace

SwapRun::SwapRun(const SwapParts& parts, ActivityLog& log, LevelCode to) : FilesOut(parts, log, to)
{
}

void SwapRun::Announce(const std::vector<Placement>& placements)
{
    for (const Placement& placement : placements)
        journal_.install.push_back(
            {placement.target, placement.file.size, placement.file.modifiedNs});
}

bool SwapRun::LookIntoStore()
{
    if (journal_.to < 0)
        return true;
    auto stored = StoredState(parts_.folders, journal_.to);
    if (!stored) {
        TellFailure(parts_.host, GetMsg(Msg::CannotReadStore), stored.Error());
        return false;
    }
    comingState_ = std::move(*stored);
    return true;
}

bool SwapRun::BringIn(bool logged)
{
    if (stateOf_) { // it had to stay; it is in the history and not the coming level's
        const auto stays = StateFilesIn(trle_);
        if (!stays) {
            TellFailure(parts_.host, GetMsg(Msg::SwapBroken), stays.Error());
            return false;
        }
        strangers_.clear();
        for (const Path& file : *stays)
            strangers_.push_back(AsItStands(file.filename().native(), file));
    }
    journal_.phase = SwapPhase::Coming;
    journal_.strangers = strangers_;
    if (const auto status = WriteJournal(parts_.folders, journal_); !status) {
        TellFailure(parts_.host, GetMsg(Msg::SwapBroken), status.Error());
        return false;
    }
    const LevelPlace before =
        stateOf_.value_or(LevelPlace{journal_.from, Path{journal_.fromStore}.parent_path()});
    stateOf_ = journal_.to;
    BroughtState brought = BringStateIn(parts_.machine, parts_.folders, parts_.settings,
                                        StateStoreOf(parts_.folders, journal_.to), comingState_,
                                        before, logged ? &log_ : nullptr);
    leftOverwritten_.insert(leftOverwritten_.end(), brought.replaced.begin(),
                            brought.replaced.end());
    waiting_ = std::move(brought.waiting);
    strangers_ = StrangersThere(parts_.folders, strangers_).ValueOr(strangers_);
    if (!waiting_.empty())
        parts_.host.Tell(Tone::Warning, GetMsg(Msg::StateNotBrought, {Join(waiting_, ", ")}));
    return true;
}

void SwapRun::KeepTargets(const std::vector<Placement>& placements)
{
    const OwnedNames left{leftAdded_};
    std::vector<Path> unknown;
    for (const Placement& placement : placements) {
        const auto facts = LookAt(trle_ / placement.relative);
        const bool known = facts && (facts->kind != platform::FileKind::File ||
                                     left.IsAsPut(placement.target, *facts));
        if (!known && !IsSpared(placement.relative))
            unknown.push_back(placement.relative);
    }
    Keep(unknown);
}

Status SwapRun::Put(const Placement& placement, bool& overwritten)
{
    const Path target = ResolvePath(trle_ / placement.relative);
    const auto isTaken = IsFile(target);
    overwritten = isTaken && *isTaken;
    const auto put = [&]() -> Status {
        if (!isTaken) // an original that it replaces would not come back
            return isTaken.Error();
        if (IsSpared(placement.relative))
            return Failure{ErrorCode::Refused, Readable(placement.target), {}};
        if (auto status = MakeFolders(target.parent_path()); !status)
            return status;
        return placement.file.moved ? MoveFileOver(placement.file.path, target)
                                    : CopyFileOver(placement.file.path, target);
    };
    auto status = put();
    log_ += CopyLine(placement.file.path, trle_ / placement.relative, static_cast<bool>(status),
                     overwritten);
    if (status)
        put_.push_back(AsItStands(placement.target, target));
    if (overwritten)
        overwritten_.push_back(placement.target);
    if (overwritten && status)
        replaced_.push_back(placement.target);
    // An original that is not there, with something in its place that no file can replace.
    if (!status && !overwritten &&
        IsFile(parts_.folders.Backup() / placement.relative).ValueOr(false))
        leftOverwritten_.push_back(placement.target);
    return status;
}

bool SwapRun::RemoveLanguageFile(const std::string& name)
{
    const std::string entry = std::string{OnDisk::FragRoot} + name;
    overwritten_.push_back(entry);
    Keep({Path{name}});
    const bool deleted = !IsSpared(name) && DeleteFile(trle_ / name);
    if (deleted)
        replaced_.push_back(entry);
    return deleted;
}

bool SwapRun::Settle()
{
    OwnerRecord record;
    SetOwner(parts_.folders, parts_.archive, record, stateOf_);
    record.added = put_;
    record.overwritten = replaced_;
    record.strangers = strangers_;
    record.waiting = waiting_;
    const OwnedNames put{put_};
    for (const OwnedFile& left : leftAdded_)
        if (!put.Has(left.name))
            record.added.push_back(left);
    const std::set<std::string> replaced{replaced_.begin(), replaced_.end()};
    const bool ownLanguage = std::any_of(put_.begin(), put_.end(),
                                         [](const OwnedFile& file) { return IsScript(file.name); });
    for (const std::string& left : leftOverwritten_) {
        if (!replaced.contains(left))
            record.overwritten.push_back(left);
        // Beside the level's own language file no other one may stand.
        if (!put.Has(left) && !(ownLanguage && IsScript(left)))
            record.owed.push_back(left);
    }
    for (const std::string_view fragment : {OnDisk::FragRoot, OnDisk::DirData, OnDisk::DirAudio}) {
        const Path folder = ResolvePath(InFolder(trle_, fragment));
        if (FolderExists(folder))
            (void)FlushFolder(folder); // names that were not flushed are found missing and mended
    }
    auto status = WriteOwner(parts_.machine, parts_.folders, std::move(record));
    if (status)
        status = DropJournal(parts_.folders);
    if (!status)
        TellFailure(parts_.host, GetMsg(Msg::SwapBroken), status.Error());
    begun_ = begun_ && !status;
    if (!kept_.empty())
        parts_.host.Tell(Tone::Warning, GetMsg(Msg::FilesKept, {Join(kept_, ", ")}));
    return static_cast<bool>(status);
}

} // namespace kestrova
