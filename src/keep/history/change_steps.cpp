#include "history/change_steps.h"

#include "core/copying.h"
#include "core/look.h"
#include "core/text.h"
#include "formats/level_folder.h"
#include "formats/trle_folder.h"
#include "history/flush_change.h"
#include "history/history.h"
#include "history/kept_for_undo.h"
#include "history/room_needed.h"
#include "history/watched_files.h"
#include "platform/file_content.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// True for what a level brought, or is known by: no savegame, note or picture of the player's.
bool IsLevelsOwn(const Path& file, const Path& home)
{
    const Path folder = file.parent_path();
    return IsSameFolder(folder, home) || IsSameFolder(folder, InFolder(home, OnDisk::DirFiles));
}

} // namespace

ChangeSteps::ChangeSteps(const ChangeParts& parts, const Change& change,
                         std::set<std::string> elsewhere, Round round, Heartbeat beat)
    : parts_(parts), change_(change), elsewhere_(std::move(elsewhere)), round_(round),
      beat_(std::move(beat))
{
}

Status ChangeSteps::Go()
{
    for (Status (ChangeSteps::*step)() :
         {&ChangeSteps::MakeNewFolders, &ChangeSteps::Look, &ChangeSteps::PutNew,
          &ChangeSteps::KeepOverwritten, &ChangeSteps::Overwrite, &ChangeSteps::KeepGoing,
          &ChangeSteps::Delete})
        if (auto status = (this->*step)(); !status)
            return status;
    RemoveEmptied();
    return {};
}

Status ChangeSteps::MakeNewFolders()
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

Status ChangeSteps::Beat() const
{
    // What has begun to go is brought to its end.
    const bool goesOn = !beat_ || beat_();
    return goesOn || destroyed_ || round_ == Round::Later ? Status{}
                                                          : MakeFailure(ErrorCode::Stopped, {});
}

Status ChangeSteps::AllIsThere() const
{
    for (const ChangeTarget& target : targets_) {
        if (auto status = Beat(); !status)
            return status;
        if (!target.foreign && !target.becomes.empty() && !Holds(target.file, target.becomes) &&
            SourceOf(target).empty())
            return MakeFailure(ErrorCode::Differs, TextOf(target.source));
    }
    return {};
}

Status ChangeSteps::Look()
{
    targets_ = ChangeTargets{change_.folders};
    for (ChangeTarget& target : targets_) {
        if (auto status = Beat(); !status)
            return status;
        const auto now = HashSpelled(target.file);
        if (!now)
            return now.Error();
        if (!now->empty() && *now != target.was && *now != target.becomes)
            if (auto status = LeaveForeign(target); !status)
                return status;
    }
    return round_ == Round::First ? AllIsThere() : Status{};
}

Status ChangeSteps::LeaveForeign(ChangeTarget& target)
{
    target.foreign = true;
    std::vector<Path> files{target.file};
    if (!target.becomes.empty())
        if (Path source = SourceOf(target);
            !source.empty() && source != HistoryContent(parts_.folders, target.becomes))
            files.push_back(std::move(source));
    return Keep(files);
}

Path ChangeSteps::SourceOf(const ChangeTarget& wanted) const
{
    const std::string& hash = wanted.becomes;
    const Path source = ResolvePath(wanted.source);
    if (source != wanted.file && Holds(source, hash))
        return source;
    for (const ChangeTarget* target : targets_.With(hash))
        if (target->file != wanted.file && Holds(target->file, hash))
            return target->file;
    if (Path kept = HistoryContent(parts_.folders, hash); Holds(kept, hash))
        return kept;
    Path kept = Path{change_.kept} / hash;
    return !change_.kept.empty() && Holds(kept, hash) ? kept : Path{};
}

Status ChangeSteps::Place(ChangeTarget& target)
{
    const Path source = SourceOf(target);
    if (source.empty() && round_ == Round::First)
        return MakeFailure(ErrorCode::Differs, TextOf(target.source));
    if (source.empty())
        return {}; // gone by another hand; waiting would not bring it back
    CopyOptions options;
    options.spelled = true;
    options.progress = [&](std::uint64_t) { return static_cast<bool>(Beat()); };
    if (auto status = CopyFileOver(source, target.file, options); !status)
        return status;
    if (!Holds(target.file, target.becomes))
        return MakeFailure(ErrorCode::Differs, TextOf(target.file));
    return {};
}

Status ChangeSteps::PutNew()
{
    for (ChangeTarget& target : targets_) {
        if (auto status = Beat(); !status)
            return status;
        if (target.foreign || !target.was.empty())
            continue;
        if (!Holds(target.file, target.becomes))
            if (auto status = Place(target); !status)
                return status;
    }
    return FlushChange(parts_.folders, change_);
}

ChangeSteps::Holder ChangeSteps::HolderOf(const std::string& hash) const
{
    if (elsewhere_.contains(hash))
        return Holder::Flushed;
    for (const ChangeTarget* target : targets_.With(hash))
        if (target->becomes == hash && !target->foreign && Holds(target->file, hash))
            return target->was.empty() ? Holder::Flushed : Holder::Unflushed;
    return Holder::Nobody;
}

Status ChangeSteps::Keep(const std::vector<Path>& files)
{
    std::vector<Path> players;
    for (const Path& file : files) {
        if (!change_.ofLevelsFiles || !IsLevelsOwn(file, change_.home))
            players.push_back(file);
        if (!change_.ofLevelsFiles)
            continue;
        const auto hash = HashSpelled(file);
        if (!hash)
            return hash.Error();
        if (auto status = KeepBeside(change_.kept, file, *hash); !status)
            return status;
    }
    return KeepInHistory(parts_.machine, parts_.folders, parts_.settings,
                         LevelPlace{change_.code, change_.home}, players, change_.reason);
}

bool ChangeSteps::HasNewPlace(const std::string& hash) const
{
    const auto& holders = targets_.With(hash);
    return std::any_of(holders.begin(), holders.end(), [&](const ChangeTarget* target) {
        return target->becomes == hash && !target->foreign;
    });
}

void ChangeSteps::RemoveEmptied() const
{
    for (const ChangedFolder& folder : change_.folders)
        if (folder.goes)
            (void)platform::RemoveFolder(ResolvePath(folder.folder)); // unless others use it
}

Status ChangeSteps::KeepAll(const std::vector<Path>& files,
                            const std::vector<const ChangeTarget*>& going)
{
    auto status = Keep(files);
    if (status)
        for (const ChangeTarget* target : going)
            if (!change_.ofLevelsFiles && !HasNewPlace(target->was))
                KeepForUndo(parts_.folders, change_, *target);
    return status;
}

Status ChangeSteps::KeepOverwritten()
{
    std::vector<Path> files;
    std::vector<const ChangeTarget*> going;
    for (const ChangeTarget& target : targets_) {
        if (auto status = Beat(); !status)
            return status;
        if (target.foreign || target.was.empty() || target.becomes.empty())
            continue;
        const auto now = HashSpelled(target.file);
        if (!now) // what cannot be read now may be readable when it is overwritten
            return now.Error();
        if (*now == target.was && HolderOf(target.was) == Holder::Nobody)
            files.push_back(target.file);
        if (*now == target.was)
            going.push_back(&target);
    }
    return KeepAll(files, going);
}

Status ChangeSteps::RoomToOverwrite() const
{
    RoomNeeded room;
    for (const ChangeTarget& target : targets_)
        if (!target.foreign && !target.was.empty() && !target.becomes.empty() &&
            target.was != target.becomes)
            room.Add(target.file, FileSize(SourceOf(target)));
    return room.IsThere(parts_.machine);
}

Status ChangeSteps::Overwrite()
{
    // Once something was overwritten there is no quick way back.
    if (round_ == Round::First)
        if (auto status = RoomToOverwrite(); !status)
            return status;
    for (ChangeTarget& target : targets_) {
        if (auto status = Beat(); !status)
            return status;
        if (target.foreign || target.was.empty() || target.becomes.empty())
            continue;
        const auto now = HashSpelled(target.file);
        if (!now)
            return now.Error();
        if (*now == target.becomes)
            continue;
        if (!now->empty() && *now != target.was) { // written just now
            if (auto status = LeaveForeign(target); !status)
                return status;
            continue;
        }
        const auto status = Place(target);
        destroyed_ = destroyed_ || status || !Holds(target.file, target.was);
        if (!status)
            return status;
    }
    return {};
}

Result<bool> ChangeSteps::StillGoes(const ChangeTarget& target)
{
    if (target.foreign || !target.becomes.empty())
        return false;
    const auto now = HashSpelled(target.file);
    return now ? Result<bool>{*now == target.was} : now.Error();
}

Status ChangeSteps::KeepGoing()
{
    std::vector<Path> files;
    std::vector<const ChangeTarget*> going;
    bool unflushed = false;
    for (const ChangeTarget& target : targets_) {
        if (auto status = Beat(); !status)
            return status;
        if (!target.respelled.empty())
            continue; // it stays, under its other name
        const auto goes = StillGoes(target);
        if (!goes)
            return goes.Error();
        if (!*goes)
            continue;
        const Holder holder = HolderOf(target.was);
        unflushed = unflushed || holder == Holder::Unflushed;
        if (holder == Holder::Nobody)
            files.push_back(target.file);
        going.push_back(&target);
    }
    if (unflushed)
        if (auto status = FlushChange(parts_.folders, change_); !status)
            return status;
    return KeepAll(files, going);
}

Status ChangeSteps::Delete()
{
    for (const ChangeTarget& target : targets_) {
        const auto goes = StillGoes(target);
        if (!goes)
            return goes.Error();
        if (!*goes)
            continue;
        if (!target.respelled.empty()) {
            if (auto status = Respell(target); !status)
                return status;
            continue;
        }
        if (const auto failure = platform::Unlink(target.file))
            return MakeFailure(ErrorCode::CannotDelete, TextOf(target.file), failure);
        destroyed_ = true;
        (void)Beat();
    }
    return {};
}

Status ChangeSteps::Respell(const ChangeTarget& target)
{
    const auto here = LookAtSpelled(target.file);
    const auto there = LookAtSpelled(target.respelled);
    if (!here || !there)
        return here ? there.Error() : here.Error();
    if (there->kind != platform::FileKind::Missing && !IsSameThing(*here, *there))
        return {}; // another file has got that name
    if (const auto failure = platform::Rename(target.file, target.respelled))
        return MakeFailure(ErrorCode::CannotWrite, TextOf(target.respelled), failure);
    destroyed_ = true;
    return {};
}

std::int32_t ChangeSteps::NotArchived() const
{
    std::int32_t missing = 0;
    for (const ChangedFolder& folder : change_.folders)
        for (const ComingFile& file : folder.after)
            if (folder.made && MatchesPattern(file.name, OnDisk::SavegamePattern) &&
                !IsFile(Path{folder.folder} / file.name).ValueOr(true))
                ++missing;
    return missing;
}

bool ChangeSteps::TakeBack()
{
    if (destroyed_)
        return false;
    bool whole = true;
    for (const ChangeTarget& target : targets_) {
        if (target.foreign || !target.was.empty())
            continue;
        const auto now = HashSpelled(target.file);
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
