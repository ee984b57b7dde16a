#include "upkeep/level_checks.h"

#include "archive/level_folders.h"
#include "core/text.h"
#include "history/changes.h"
#include "saves/savegame_moves.h"
#include "session/held_folders.h"
#include "session/operation.h"
#include "session/telling.h"
#include "swap/backup_state.h"
#include "swap/verify_backup.h"
#include "upkeep/last_check.h"
#include "upkeep/repair_backup.h"
#include "words/check.h"

#include <algorithm>
#include <map>
#include <set>

namespace kestrova
{

namespace
{

std::string NameOfLevel(const Archive& archive, LevelCode code)
{
    if (code == originalCode)
        return GetMsg(Msg::RepairFromBackup);
    return Readable(LevelNameOf(archive, code));
}

/// What nobody noted is noted by whoever may write there, and not while files are on their way.
Noting MayNote(const Folders& folders, FolderLocks& locks)
{
    return !ChangeWaits(folders) && HoldFolders(locks, folders) ? Noting::Yes : Noting::No;
}

} // namespace

std::vector<LevelCode> LevelChecks::Everything(const Folders& folders, const Archive& archive)
{
    std::vector<LevelCode> codes;
    for (const LevelRecord& level : archive.levels)
        if (level.levelCode != originalCode)
            codes.push_back(level.levelCode);
    if (!BackupIsAway(folders))
        codes.push_back(originalCode);
    return codes;
}

bool LevelChecks::Check(const std::vector<LevelCode>& codes)
{
    const Operation running{session_};
    noting_ = MayNote(session_.Folders(), session_.locks);
    rows_.clear();
    unchecked_.clear();
    repaired_.clear();
    notedNow_.clear();
    levels_ = files_ = 0;
    isChecked_ = false;
    isRepaired_ = false;
    const auto progress =
        session_.host.BeginProgress(ProgressWindow::Progress, GetMsg(Msg::CheckUnderWay));
    progress->AllowStop();
    for (std::size_t i = 0; i < codes.size(); ++i) {
        progress->SetBar(i, codes.size());
        progress->SetLabel(GetMsg(Msg::CheckingLevel, {NameOfLevel(session_.archive, codes[i])}));
        if (!progress->Step() || !CheckOne(codes[i], *progress))
            return false;
    }
    FindSources(*progress);
    Note(codes);
    return true;
}

void LevelChecks::Note(std::vector<LevelCode> checked) const
{
    if (noting_ == Noting::No)
        return;
    for (const UncheckedLevel& level : unchecked_)
        std::erase(checked, level.code);
    std::set<LevelCode> harmed;
    for (const CheckedRow& row : rows_)
        if (row.fault.kind != FileFault::Unexpected)
            harmed.insert(row.code);
    NoteLastCheck(session_.Folders(), session_.archive, checked, {harmed.begin(), harmed.end()});
}

bool LevelChecks::CheckOne(LevelCode code, ProgressScope& progress)
{
    const Heartbeat beat = [&] { return progress.Step(); };
    auto found = code == originalCode
                     ? VerifyBackup(session_.Folders(), noting_, beat)
                     : VerifyLevel(session_.Folders(), session_.archive, code, noting_, beat);
    const std::string name = NameOfLevel(session_.archive, code);
    if (!found) {
        const Failure& failure = found.Error();
        if (failure.code == ErrorCode::Stopped)
            return false;
        std::string reason = failure.sentence.empty() ? failure.subject : failure.sentence;
        if (!failure.reason.empty())
            reason += (reason.empty() ? "" : ": ") + failure.reason;
        const LevelRecord* const level = session_.archive.Find(code);
        const bool isAway =
            level != nullptr && level->cdNumber != 0 && failure.code == ErrorCode::Missing;
        unchecked_.push_back({code, name, std::move(reason), isAway});
        return true;
    }
    if (code != originalCode) {
        ++levels_;
        files_ += found->files;
        if (found->isNotedNow)
            notedNow_.push_back(code);
    }
    isChecked_ = true;
    for (LevelFault& fault : found->faults)
        rows_.push_back({code, name, std::move(fault), {}, {}});
    return true;
}

void LevelChecks::FindSources(ProgressScope& progress)
{
    RepairSources sources{session_.machine, session_.Folders(), session_.archive,
                          ToolsOf(session_)};
    std::map<LevelCode, std::set<std::string>> faulty;
    for (const CheckedRow& row : rows_)
        faulty[row.code].insert(row.fault.stored);
    for (CheckedRow& row : rows_) {
        if (!row.fault.noted && row.fault.kind != FileFault::Unexpected)
            sources.Discs().NoteFault(row.code, faulty[row.code], row.fault);
        const bool staysInTheWay =
            row.fault.kind == FileFault::InTheWay && row.code != originalCode;
        if (!row.fault.noted || staysInTheWay)
            continue;
        progress.SetLabel(GetMsg(Msg::RepairLooking, {row.fault.file}));
        const auto found =
            sources.Find(row.code, *row.fault.noted, [&] { return progress.Step(); });
        if (found)
            row.source = found->where;
        if (!progress.Step())
            return; // the others are looked for when they are repaired
    }
}

void LevelChecks::Forget(LevelCode code)
{
    std::erase_if(rows_, [&](const CheckedRow& row) { return row.code == code; });
}

bool LevelChecks::RepairOne(LevelCode code, RepairSources& sources, ProgressScope& progress)
{
    CheckedLevel checked;
    for (const CheckedRow& row : rows_)
        if (row.code == code)
            checked.faults.push_back(row.fault);
    const auto done =
        code == originalCode
            ? RepairBackup(session_.machine, session_.Folders(), checked, sources, progress)
            : RepairLevel(session_, SoundConverterOf(session_), code, checked, sources, progress);
    if (!done) {
        if (done.Error().code != ErrorCode::Stopped)
            TellFailure(session_.host,
                        GetMsg(Msg::NotRepaired, {NameOfLevel(session_.archive, code)}),
                        done.Error());
        return false;
    }
    for (const RepairedFile& file : done->repaired)
        repaired_.push_back({code, file});
    Forget(code);
    // What came back is proved as everything else is.
    const std::size_t levels = levels_;
    const std::size_t files = files_;
    const bool all = CheckOne(code, progress);
    levels_ = levels;
    files_ = files;
    for (CheckedRow& row : rows_)
        for (const UnrepairedFile& left : done->left)
            if (row.code == code && row.fault.file == left.fault.file &&
                row.fault.stored == left.fault.stored)
                row.remedy = left.remedy;
    return all;
}

bool LevelChecks::Repair(const Path& offered)
{
    const Operation running{session_};
    repaired_.clear();
    if (const auto ready = EndEarlierMove(session_); !ready) {
        TellFailure(session_.host, GetMsg(Msg::RepairWaits), ready.Error());
        return false;
    }
    noting_ = MayNote(session_.Folders(), session_.locks);
    const auto progress =
        session_.host.BeginProgress(ProgressWindow::Progress, GetMsg(Msg::RepairUnderWay));
    progress->AllowStop();
    RepairSources sources{session_.machine, session_.Folders(), session_.archive,
                          ToolsOf(session_)};
    if (!offered.empty())
        if (const auto opened = sources.Offer(offered, *progress); !opened) {
            if (opened.Error().code != ErrorCode::Stopped)
                TellFailure(session_.host, GetMsg(Msg::RepairNotOpened, {TextOf(offered)}),
                            opened.Error());
            return false;
        }
    std::set<LevelCode> codes;
    for (const CheckedRow& row : rows_)
        if (row.fault.kind != FileFault::Unexpected)
            codes.insert(row.code);
    isRepaired_ = true;
    bool whole = true;
    std::size_t done = 0;
    for (const LevelCode code : codes) {
        progress->SetBar(done++, codes.size());
        if (!progress->Step())
            return false;
        whole = RepairOne(code, sources, *progress) && whole;
    }
    Note({codes.begin(), codes.end()});
    session_.list.Refresh();
    return whole;
}

std::size_t LevelChecks::Harmed() const
{
    return static_cast<std::size_t>(
        std::count_if(rows_.begin(), rows_.end(), [](const CheckedRow& row) {
            return row.fault.kind != FileFault::Unexpected;
        }));
}

std::string LevelChecks::Summary() const
{
    const auto number = [](std::size_t count) { return std::to_string(count); };
    std::string text = GetMsg(Msg::CheckDone, {number(levels_), number(files_), number(Harmed())});
    const auto add = [&](Message words, std::size_t count) {
        if (count > 0)
            text += " " + GetMsg(words, {number(count)});
    };
    if (isRepaired_)
        text += " " + GetMsg(Msg::CheckRepaired, {number(repaired_.size())});
    add(Msg::CheckNotedNow, notedNow_.size());
    add(Msg::CheckUnchecked, unchecked_.size());
    return text;
}

std::string LevelChecks::ListText() const
{
    std::string text;
    for (const CheckedRow& row : rows_)
        text += std::to_string(row.code) + '\t' + OnOneLine(row.level) + '\t' +
                OnOneLine(row.fault.file) + '\t' + NameOf(row.fault.kind) + '\t' +
                OnOneLine(row.remedy.empty() ? row.source : row.remedy) + '\n';
    for (const UncheckedLevel& level : unchecked_)
        text += std::to_string(level.code) + '\t' + OnOneLine(level.level) + "\t\t" +
                GetMsg(Msg::FaultUnchecked) + '\t' + OnOneLine(level.reason) + '\n';
    return text;
}

std::string LevelChecks::NameOf(FileFault kind)
{
    switch (kind) {
    case FileFault::Missing:
        return GetMsg(Msg::FaultMissing);
    case FileFault::Differs:
        return GetMsg(Msg::FaultDiffers);
    case FileFault::Cut:
        return GetMsg(Msg::FaultCut);
    case FileFault::Damaged:
        return GetMsg(Msg::FaultDamaged);
    case FileFault::Unreadable:
        return GetMsg(Msg::FaultUnreadable);
    case FileFault::InTheWay:
        return GetMsg(Msg::FaultInTheWay);
    case FileFault::Unexpected:
        break;
    }
    return GetMsg(Msg::FaultUnexpected);
}

} // namespace kestrova
