#include "swap/swap_run.h"

#include "archive/level_folders.h"
#include "catalogue/message.h"
#include "swap/log_lines.h"
#include "swap/state_files.h"
#include "swap/swap_notes.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// Disks keep times in steps of up to two seconds.
constexpr std::int64_t timeStepNs = 2'000'000'000;

bool IsSound(const std::string& name)
{
    return EqualNames(std::string_view{name}.substr(0, RowText(Msg::FragAudio).size()),
                      RowText(Msg::FragAudio));
}

} // namespace

bool IsAsListed(const OwnedFile& listed, const platform::FileFacts& facts)
{
    const std::int64_t apart = facts.modifiedNs - listed.modifiedNs;
    return facts.kind == platform::FileKind::File && facts.size == listed.size &&
           apart < timeStepNs && apart > -timeStepNs;
}

SwapRun::SwapRun(Session& session, ActivityLog& log, LevelCode to)
    : session_(session), log_(log), trle_(ResolvePath(session.TrleFolder()))
{
    journal_.to = to;
    journal_.folder = MarkOf(trle_);
    journal_.folder.path = session.TrleFolder().native();
}

void SwapRun::Announce(const std::vector<Placement>& placements)
{
    for (const Placement& placement : placements)
        journal_.install.push_back(
            {placement.target, placement.file.size, placement.file.modifiedNs});
}

bool SwapRun::TakeOut(LevelCode& previous)
{
    owner_ = OwnerThatCounts(session_);
    const Path marker = session_.MarkerPath();
    if (!FileExists(marker))
        return TakeOutOriginal(previous);

    const auto bytes = ReadWholeFile(marker);
    if (!bytes) {
        TellFailure(session_, GetMsg(Msg::MarkerUnreadable, {TextOf(marker)}), bytes.Error());
        return false;
    }
    const MarkerContent content = ParseMarker(*bytes);
    const Belongings belongings = BelongingsOf(content, owner_);
    journal_.remove = belongings.added;
    journal_.restore = belongings.overwritten;
    previous = content.code;
    if (content.hasText) {
        const Path folder = LevelHomeOf(session_, previous);
        if (!FolderExists(folder)) {
            session_.host.Tell(Tone::Error,
                               GetMsg(Msg::LevelFolderNotFound, {TextOf(folder), lineBreak}));
            log_ += LogLine({GetMsg(Msg::LogLevelFolderNotFound, {TextOf(folder)})});
            if (previous == journal_.to)
                return true;
            journal_.liveIsKept = true;
            leftAdded_ = belongings.added;
            leftOverwritten_ = belongings.overwritten;
            return KeepLiveState(previous);
        }
    }
    log_ += content.code == -1
                ? LogLine({GetMsg(Msg::LogPreviousNone)})
                : LogLine({GetMsg(Msg::LogPreviousLevel, {LevelNameOf(session_, previous)}),
                           std::to_string(previous)});
    if (previous == journal_.to)
        return true;

    if (!belongings.refused.empty())
        session_.host.Tell(Tone::Warning,
                           GetMsg(Msg::MarkerEntriesRefused, {Join(belongings.refused, ", ")}));
    if (!content.hasText) {
        if (!KeepLiveState(originalCode))
            return false;
        (void)DeleteFile(marker);
        return true;
    }
    switch (MoveStateOut(previous, true)) {
    case StateMove::Stopped:
        return false;
    case StateMove::Failed:
        leftAdded_ = belongings.added;
        leftOverwritten_ = belongings.overwritten;
        previous = originalCode;
        return true;
    case StateMove::Moved:
        break;
    }
    if (previous != originalCode) {
        if (!DeleteAdded(belongings)) {
            leftOverwritten_ = belongings.overwritten;
            previous = originalCode;
            return true;
        }
        RestoreOverwritten(belongings.overwritten);
    }
    (void)DeleteFile(marker); // one that stays is overwritten by the next
    return true;
}

bool SwapRun::TakeOutOriginal(LevelCode& previous)
{
    previous = originalCode;
    const Belongings belongings = BelongingsOf({}, owner_);
    journal_.remove = belongings.added;
    journal_.restore = belongings.overwritten;
    if (MoveStateOut(originalCode, false) == StateMove::Stopped)
        return false;
    log_ += LogLine({GetMsg(Msg::LogNoMarker)});
    // What an earlier removal had to leave behind goes now.
    if (DeleteAdded(belongings))
        RestoreOverwritten(belongings.overwritten);
    else
        leftOverwritten_ = belongings.overwritten;
    return true;
}

bool SwapRun::DeleteAdded(const Belongings& belongings)
{
    if (belongings.added.empty())
        return true;
    const auto progress =
        session_.host.BeginProgress(ProgressWindow::Progress, GetMsg(Msg::RemovingPreviousFiles));
    for (std::size_t i = 0; i < belongings.added.size(); ++i) {
        const OwnedFile& file = belongings.added[i];
        const auto relative = SafeRelative(file.name);
        if (!session_.preferences.fullBackup && IsSound(file.name)) {
            log_ += LogLine({GetMsg(Msg::LogNotRemovedCompact, {Readable(file.name)})});
            leftAdded_.push_back(file);
        } else if (const auto status = LogDeleteFile(trle_ / *relative, log_); !status) {
            TellFailure(session_, GetMsg(Msg::CannotDeleteFile) + TextOf(trle_ / *relative),
                        status.Error());
            leftAdded_.insert(leftAdded_.end(),
                              belongings.added.begin() + static_cast<std::ptrdiff_t>(i),
                              belongings.added.end());
            return false;
        }
        progress->SetBar(i + 1, belongings.added.size());
        progress->Step();
    }
    return true;
}

void SwapRun::RestoreOverwritten(const std::vector<std::string>& names)
{
    if (names.empty())
        return;
    const auto progress =
        session_.host.BeginProgress(ProgressWindow::Progress, GetMsg(Msg::RestoringChangedFiles));
    std::vector<std::string> failed;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const auto relative = SafeRelative(names[i]);
        const auto status = RestoreOriginal(session_, *relative);
        log_ += CopyLine(session_.BackupFolder() / *relative, trle_ / *relative,
                         static_cast<bool>(status), false);
        // What no backup holds stays missing; what it holds is tried again with the next swap.
        if (!status && FileExists(session_.BackupFolder() / *relative)) {
            leftOverwritten_.push_back(names[i]);
            failed.push_back(Readable(names[i]));
        }
        progress->SetBar(i + 1, names.size());
        progress->Step();
    }
    if (!failed.empty())
        session_.host.Tell(Tone::Warning, GetMsg(Msg::OriginalsNotBack, {Join(failed, ", ")}));
}

bool SwapRun::BringIn(bool logged)
{
    journal_.phase = SwapPhase::Coming;
    if (const auto status = WriteJournal(session_, journal_); !status) {
        TellFailure(session_, GetMsg(Msg::SwapBroken), status.Error());
        return false;
    }
    const LevelCode before = stateOf_.value_or(journal_.from);
    stateOf_ = journal_.to;
    std::vector<std::string> failed;
    std::vector<std::string> replaced;
    BringStateIn(session_, journal_.to, before, logged ? &log_ : nullptr, replaced, failed);
    leftOverwritten_.insert(leftOverwritten_.end(), replaced.begin(), replaced.end());
    if (!failed.empty())
        session_.host.Tell(Tone::Warning, GetMsg(Msg::StateNotBrought, {Join(failed, ", ")}));
    return true;
}

Status SwapRun::Put(const Placement& placement, bool& overwritten)
{
    const Path target = ResolvePath(trle_ / placement.relative);
    overwritten = FileExists(target);
    const auto put = [&]() -> Status {
        if (auto status = MakeFolders(target.parent_path()); !status)
            return status;
        const bool known =
            std::any_of(leftAdded_.begin(), leftAdded_.end(), [&](const OwnedFile& file) {
                return EqualNames(file.name, placement.target) &&
                       IsAsListed(file, platform::FactsOf(target));
            });
        if (overwritten && !known)
            if (auto status = KeepOriginal(session_, placement.relative); !status)
                return status;
        return placement.file.moved ? MoveFileOver(placement.file.path, target)
                                    : CopyFileOver(placement.file.path, target);
    };
    auto status = put();
    log_ += CopyLine(placement.file.path, trle_ / placement.relative, static_cast<bool>(status),
                     overwritten);
    const platform::FileFacts facts = platform::FactsOf(target);
    put_.push_back(
        status ? OwnedFile{placement.target, facts.size, facts.modifiedNs}
               : OwnedFile{placement.target, placement.file.size, placement.file.modifiedNs});
    if (overwritten)
        overwritten_.push_back(placement.target);
    return status;
}

bool SwapRun::RemoveLanguageFile(const std::string& name)
{
    const std::string entry = GetMsg(Msg::FragRoot) + name;
    overwritten_.push_back(entry);
    const auto kept = KeepOriginal(session_, name);
    return kept && DeleteFile(trle_ / name);
}

bool SwapRun::Settle()
{
    OwnerRecord record;
    record.owner = stateOf_;
    record.added = put_;
    record.overwritten = overwritten_;
    for (const OwnedFile& left : leftAdded_)
        if (std::none_of(put_.begin(), put_.end(),
                         [&](const OwnedFile& file) { return EqualNames(file.name, left.name); }))
            record.added.push_back(left);
    for (const std::string& left : leftOverwritten_)
        if (std::find(overwritten_.begin(), overwritten_.end(), left) == overwritten_.end())
            record.overwritten.push_back(left);
    for (const Msg fragment : {Msg::FragRoot, Msg::DirData, Msg::DirAudio}) {
        const Path folder = ResolvePath(InFolder(trle_, RowText(fragment)));
        if (FolderExists(folder))
            (void)FlushFolder(folder); // names that were not flushed are found missing and mended
    }
    auto status = WriteOwner(session_, std::move(record));
    if (status)
        status = DropJournal(session_);
    if (!status)
        TellFailure(session_, GetMsg(Msg::SwapBroken), status.Error());
    begun_ = begun_ && !status;
    return static_cast<bool>(status);
}

} // namespace kestrova
