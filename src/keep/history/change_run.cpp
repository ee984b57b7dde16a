#include "history/change_run.h"

#include "core/copying.h"
#include "core/look.h"
#include "core/staged_file.h"
#include "formats/trle_folder.h"
#include "history/history.h"
#include "platform/file_content.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// Empty for a file that is missing; a failure for one that cannot be read.
Result<std::string> HashNow(const Path& file)
{
    std::string hash;
    const auto isFree = IsFree(file);
    if (!isFree)
        return isFree.Error();
    if (*isFree)
        return hash;
    if (const auto failure = platform::HashOfFile(file, hash))
        return MakeFailure(ErrorCode::CannotRead, TextOf(file), failure);
    return hash;
}

bool Holds(const Path& file, const std::string& hash)
{
    const auto now = HashNow(file);
    return now && *now == hash && !hash.empty();
}

} // namespace

Status FlushChange(const Folders& folders, const StateChange& change)
{
    std::vector<Path> touched{ResolvePath(folders.program)};
    for (const ChangedFolder& folder : change.folders)
        touched.push_back(ResolvePath(folder.folder));
    std::set<std::uint64_t> flushed;
    for (const Path& folder : touched) {
        const auto facts = LookAt(folder);
        if (!facts)
            return facts.Error();
        if (facts->kind != platform::FileKind::Folder || !flushed.insert(facts->device).second)
            continue;
        if (const auto failure = platform::SyncFileSystem(folder))
            return MakeFailure(ErrorCode::CannotWrite, TextOf(folder), failure);
    }
    return {};
}

ChangeRun::ChangeRun(Session& session, const StateChange& change, std::set<std::string> elsewhere,
                     Round round)
    : session_(session), change_(change), elsewhere_(std::move(elsewhere)), round_(round)
{
}

Status ChangeRun::Go()
{
    for (Status (ChangeRun::*step)() :
         {&ChangeRun::MakeNewFolders, &ChangeRun::Look, &ChangeRun::PutNew,
          &ChangeRun::KeepOverwritten, &ChangeRun::Overwrite, &ChangeRun::KeepGoing,
          &ChangeRun::Delete})
        if (auto status = (this->*step)(); !status)
            return status;
    return {};
}

Status ChangeRun::MakeNewFolders()
{
    for (const ChangedFolder& folder : change_.folders) {
        const Path place = ResolvePath(folder.folder);
        if (folder.made) {
            if (auto status = MakeFolder(place); !status)
                return status;
        } else if (!folder.after.empty()) {
            const auto isThere = IsFolder(place);
            if (!isThere)
                return isThere.Error();
            if (!*isThere)
                return MakeFailure(ErrorCode::Missing, TextOf(place));
        }
    }
    return {};
}

void ChangeRun::Add(const ChangedFolder& folder)
{
    const Path place = ResolvePath(folder.folder);
    ClearStagedLeftovers(place);
    const std::size_t first = targets_.size();
    for (const StateFile& file : folder.before)
        targets_.push_back({ResolvePath(place / file.name), file.hash, {}, {}});
    for (const ComingFile& file : folder.after) {
        const Path path = ResolvePath(place / file.name);
        auto same =
            std::find_if(targets_.begin() + static_cast<std::ptrdiff_t>(first), targets_.end(),
                         [&](const Target& target) { return target.file == path; });
        if (same == targets_.end())
            same = targets_.insert(targets_.end(), {path, {}, {}, {}});
        same->becomes = file.hash;
        same->source = file.source;
    }
}

Status ChangeRun::AllIsThere() const
{
    for (const Target& target : targets_)
        if (!target.foreign && !target.becomes.empty() && !Holds(target.file, target.becomes) &&
            SourceOf(target).empty())
            return MakeFailure(ErrorCode::Differs, TextOf(target.source));
    return {};
}

Status ChangeRun::Look()
{
    targets_.clear();
    for (const ChangedFolder& folder : change_.folders)
        Add(folder);
    for (Target& target : targets_) {
        const auto now = HashNow(target.file);
        if (!now)
            return now.Error();
        if (!now->empty() && *now != target.was && *now != target.becomes)
            if (auto status = LeaveForeign(target); !status)
                return status;
    }
    return round_ == Round::First ? AllIsThere() : Status{};
}

Status ChangeRun::LeaveForeign(Target& target)
{
    target.foreign = true;
    std::vector<Path> files{target.file};
    if (!target.becomes.empty())
        if (Path source = SourceOf(target);
            !source.empty() && source != HistoryContent(session_.Folders(), target.becomes))
            files.push_back(std::move(source));
    return Keep(files);
}

Path ChangeRun::SourceOf(const Target& wanted) const
{
    const std::string& hash = wanted.becomes;
    if (wanted.source != wanted.file && Holds(wanted.source, hash))
        return wanted.source;
    for (const Target& target : targets_)
        if ((target.was == hash || target.becomes == hash) && target.file != wanted.file &&
            Holds(target.file, hash))
            return target.file;
    Path kept = HistoryContent(session_.Folders(), hash);
    return Holds(kept, hash) ? kept : Path{};
}

Status ChangeRun::Place(Target& target)
{
    const Path source = SourceOf(target);
    if (source.empty() && round_ == Round::First)
        return MakeFailure(ErrorCode::Differs, TextOf(target.source));
    if (source.empty())
        return {}; // gone by another hand; waiting would not bring it back
    if (auto status = CopyFileOver(source, target.file); !status)
        return status;
    if (!Holds(target.file, target.becomes))
        return MakeFailure(ErrorCode::Differs, TextOf(target.file));
    return {};
}

Status ChangeRun::PutNew()
{
    for (Target& target : targets_) {
        if (target.foreign || !target.was.empty())
            continue;
        if (!Holds(target.file, target.becomes))
            if (auto status = Place(target); !status)
                return status;
    }
    return FlushChange(session_.Folders(), change_);
}

ChangeRun::Holder ChangeRun::HolderOf(const std::string& hash) const
{
    if (elsewhere_.contains(hash))
        return Holder::Flushed;
    Holder holder = Holder::Nobody;
    for (const Target& target : targets_)
        if (target.becomes == hash && !target.foreign && Holds(target.file, hash)) {
            if (target.was.empty())
                return Holder::Flushed;
            holder = Holder::Unflushed;
        }
    return holder;
}

Status ChangeRun::Keep(const std::vector<Path>& files)
{
    return KeepInHistory(session_.machine, session_.Folders(), session_.archive, session_.settings,
                         change_.code, files, change_.reason);
}

Status ChangeRun::KeepOverwritten()
{
    std::vector<Path> files;
    for (const Target& target : targets_) {
        if (target.foreign || target.was.empty() || target.becomes.empty())
            continue;
        const auto now = HashNow(target.file);
        if (!now) // what cannot be read now may be readable when it is overwritten
            return now.Error();
        if (*now == target.was && HolderOf(target.was) == Holder::Nobody)
            files.push_back(target.file);
    }
    return Keep(files);
}

Status ChangeRun::Overwrite()
{
    for (Target& target : targets_) {
        if (target.foreign || target.was.empty() || target.becomes.empty())
            continue;
        const auto now = HashNow(target.file);
        if (!now)
            return now.Error();
        if (*now == target.becomes)
            continue;
        if (!now->empty() && *now != target.was) { // written just now
            if (auto status = LeaveForeign(target); !status)
                return status;
            continue;
        }
        destroyed_ = true;
        if (auto status = Place(target); !status)
            return status;
    }
    return {};
}

Result<bool> ChangeRun::StillGoes(const Target& target)
{
    if (target.foreign || !target.becomes.empty())
        return false;
    const auto now = HashNow(target.file);
    return now ? Result<bool>{*now == target.was} : now.Error();
}

Status ChangeRun::KeepGoing()
{
    std::vector<Path> files;
    bool unflushed = false;
    for (const Target& target : targets_) {
        const auto goes = StillGoes(target);
        if (!goes)
            return goes.Error();
        if (!*goes)
            continue;
        const Holder holder = HolderOf(target.was);
        unflushed = unflushed || holder == Holder::Unflushed;
        if (holder == Holder::Nobody)
            files.push_back(target.file);
    }
    if (unflushed)
        if (auto status = FlushChange(session_.Folders(), change_); !status)
            return status;
    return Keep(files);
}

Status ChangeRun::Delete()
{
    for (const Target& target : targets_) {
        const auto goes = StillGoes(target);
        if (!goes)
            return goes.Error();
        if (!*goes)
            continue;
        destroyed_ = true;
        if (const auto failure = platform::Unlink(target.file))
            return MakeFailure(ErrorCode::CannotDelete, TextOf(target.file), failure);
    }
    return {};
}

std::int32_t ChangeRun::NotArchived() const
{
    std::int32_t missing = 0;
    for (const ChangedFolder& folder : change_.folders)
        for (const ComingFile& file : folder.after)
            if (folder.made && MatchesPattern(file.name, OnDisk::SavegamePattern) &&
                !IsFile(Path{folder.folder} / file.name).ValueOr(true))
                ++missing;
    return missing;
}

bool ChangeRun::TakeBack()
{
    if (destroyed_)
        return false;
    bool whole = true;
    for (const Target& target : targets_) {
        if (target.foreign || !target.was.empty())
            continue;
        const auto now = HashNow(target.file);
        whole = now && whole;
        if (!now || *now != target.becomes)
            continue;
        // What it was copied from may have been rewritten since by the game.
        whole = !SourceOf(target).empty() && !platform::Unlink(target.file) && whole;
    }
    for (const ChangedFolder& folder : change_.folders)
        if (folder.made && IsFolder(folder.folder).ValueOr(true))
            whole = !platform::RemoveFolder(ResolvePath(folder.folder)) && whole;
    return whole;
}

} // namespace kestrova
