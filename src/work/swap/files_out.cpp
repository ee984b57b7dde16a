#include "swap/files_out.h"

#include "archive/level_folders.h"
#include "core/copying.h"
#include "core/file_kinds.h"
#include "core/look.h"
#include "core/name_list.h"
#include "formats/trle_folder.h"
#include "history/swap_journal_file.h"
#include "originals/vault.h"
#include "session/telling.h"
#include "swap/backup_state.h"
#include "swap/file_names.h"
#include "swap/live_state.h"
#include "words/restore.h"
#include "words/swap.h"

#include <algorithm>

namespace kestrova
{

FilesOut::FilesOut(const SwapParts& parts, ActivityLog& log, LevelCode to)
    : StateOut(parts, log, to)
{
}

bool FilesOut::Stands(LevelCode marked) const
{
    const auto isOurs = [&](const LevelPlace& place) {
        return place.code == marked &&
               HomeOf(parts_.folders, place) == LevelHomeOf(parts_.folders, marked);
    };
    return marked == journal_.to &&
           (marked < 0 || (isOurs(standing_.level) && isOurs(standing_.state)));
}

LevelPlace FilesOut::StandingPlace(LevelCode marked) const
{
    return standing_.level.code == marked ? standing_.level : LevelPlace{marked};
}

bool FilesOut::TakeOut(LevelCode& previous)
{
    auto standing = LookAtStanding(parts_.folders, parts_.archive);
    if (!standing)
        return TellUnknown(parts_.host, standing.Error());
    standing_ = std::move(*standing);
    owner_ = standing_.owner;
    if (owner_) {
        auto there = StrangersThere(parts_.folders, owner_->strangers);
        if (!there) {
            TellFailure(parts_.host, GetMsg(Msg::CannotKeepState), there.Error());
            return false;
        }
        strangers_ = std::move(*there);
        waiting_ = owner_->waiting;
    }
    const Path marker = parts_.folders.Marker();
    const auto bytes = ReadFileIfThere(marker);
    if (!bytes)
        return TellUnknown(parts_.host, bytes.Error());
    if (!*bytes)
        return TakeOutOriginal(previous);
    const MarkerContent content = ParseMarker(**bytes);
    const Belongings belongings = BelongingsOf(content, owner_);
    journal_.remove = belongings.added;
    journal_.restore = belongings.overwritten;
    previous = content.code;
    markerSaidNothing_ = content.code == -1 && !owner_;
    const LevelPlace level = StandingPlace(previous);
    if (content.hasText) {
        const Path folder = HomeOf(parts_.folders, level);
        const auto isThere = IsFolder(folder);
        if (!isThere)
            return TellFolderNotRead(parts_.host, isThere.Error());
        if (!*isThere) {
            // The full restore that the words advise would find no place for the savegames either.
            const bool isAway =
                !IsArchiveFolder(parts_.archive, folder.parent_path()).ValueOr(false);
            parts_.host.Tell(
                Tone::Error, GetMsg(Msg::LevelFolderNotFound, {TextOf(folder), lineBreak}),
                isAway ? GetMsg(Msg::LevelArchiveAway, {TextOf(folder.parent_path())}) : "");
            log_ += LogLine({Told(Msg::LogLevelFolderNotFound, {TextOf(folder)})});
            if (Stands(previous))
                return true;
            journal_.liveIsKept = true;
            leftAdded_ = belongings.added;
            leftOverwritten_ = belongings.overwritten;
            return KeepLiveState(level);
        }
    }
    log_ += content.code == -1
                ? LogLine({Told(Msg::LogPreviousNone)})
                : LogLine({Told(Msg::LogPreviousLevel, {LevelNameOf(parts_.archive, previous)}),
                           std::to_string(previous)});
    if (Stands(previous))
        return true;

    if (!belongings.refused.empty())
        parts_.host.Tell(Tone::Warning,
                         GetMsg(Msg::MarkerEntriesRefused, {ShownNames(belongings.refused)}));
    if (!content.hasText) {
        if (!KeepLiveState(originalCode))
            return false;
        (void)DeleteFile(marker);
        return true;
    }
    switch (MoveStateOut(level, true)) {
    case Outcome::Stopped:
        return false;
    case Outcome::Failed:
        leftAdded_ = belongings.added;
        leftOverwritten_ = belongings.overwritten;
        previous = originalCode;
        return true;
    case Outcome::Moved:
        break;
    }
    if (previous != originalCode) {
        const bool deleted = DeleteAdded(level, belongings);
        RestoreOverwritten(belongings.overwritten);
        if (!deleted) {
            previous = originalCode;
            return true;
        }
    }
    (void)DeleteFile(marker); // one that stays is overwritten by the next
    return true;
}

Result<bool> FilesOut::StateIsHomeless() const
{
    if (!owner_ || !owner_->owner || standing_.state.code == originalCode)
        return false;
    const auto hasHome = IsFolder(HomeOf(parts_.folders, standing_.state));
    return hasHome ? Result<bool>{!*hasHome} : hasHome.Error();
}

bool FilesOut::TakeOutOriginal(LevelCode& previous)
{
    previous = originalCode;
    const Belongings belongings = BelongingsOf({}, owner_);
    journal_.remove = belongings.added;
    journal_.restore = belongings.overwritten;
    const auto isHomeless = StateIsHomeless();
    if (!isHomeless) {
        TellFailure(parts_.host, GetMsg(Msg::CannotKeepState), isHomeless.Error());
        return false;
    }
    if (*isHomeless) { // nobody else may take it over
        journal_.liveIsKept = true;
        if (!KeepLiveState(standing_.state))
            return false;
    } else if (MoveStateOut(originalCode, false) == Outcome::Stopped) {
        return false;
    }
    log_ += LogLine({Told(Msg::LogNoMarker)});
    // What an earlier removal had to leave behind goes now.
    (void)DeleteAdded(originalCode, belongings); // what stays again is told and noted
    RestoreOverwritten(belongings.overwritten);
    return true;
}

void FilesOut::Keep(const std::vector<Path>& relatives)
{
    const Keeping keeping = KeepOriginals(parts_.machine, parts_.folders, relatives);
    for (const Path& relative : keeping.kept)
        kept_.push_back(Readable(ToBackslashes(relative)));
    if (keeping.failed.empty())
        return;
    std::vector<std::string> names;
    for (const Path& relative : keeping.failed) {
        spared_.Add(relative.native());
        names.push_back(Readable(ToBackslashes(relative)));
    }
    TellFailure(parts_.host, GetMsg(Msg::CannotKeepFiles, {ShownNames(names)}), keeping.failure);
}

bool FilesOut::IsSpared(const Path& relative) const
{
    return spared_.Has(relative.native());
}

bool FilesOut::DeleteAdded(const LevelPlace& level, const Belongings& belongings)
{
    if (belongings.added.empty())
        return true;
    const auto progress =
        parts_.host.BeginProgress(ProgressWindow::Progress, GetMsg(Msg::RemovingPreviousFiles));
    const auto stays = [&](const OwnedFile& file) {
        return StaysWithCompactBackup(parts_.preferences, file.name);
    };
    struct Place {
        Path relative;
        Path exact; ///< as it is spelled now; no twin goes in its stead
    };
    std::vector<Place> places;
    std::vector<Path> unsafe;
    {
        SafeContents safe{parts_, parts_.folders, level};
        for (const OwnedFile& file : belongings.added) {
            Path relative = SpelledAsPut(parts_.folders, file, *SafeRelative(file.name));
            if (!stays(file) && !safe.Holds(file, relative))
                unsafe.push_back(relative);
            Path exact = ResolvePath(trle_ / relative);
            places.push_back({std::move(relative), std::move(exact)});
        }
    }
    Keep(unsafe);
    bool deleted = true;
    for (std::size_t i = 0; i < belongings.added.size(); ++i) {
        const OwnedFile& file = belongings.added[i];
        const auto& [relative, exact] = places[i];
        if (stays(file)) {
            log_ += LogLine({Told(Msg::LogNotRemovedCompact, {Readable(file.name)})});
            leftAdded_.push_back(file);
        } else if (IsSpared(relative)) {
            leftAdded_.push_back(file); // the next swap tries again to keep it and to take it out
        } else if (const auto status = LogDeleteFile(exact, trle_ / relative, log_); !status) {
            TellFailure(parts_.host, GetMsg(Msg::CannotDeleteFile) + TextOf(trle_ / relative),
                        status.Error());
            leftAdded_.push_back(file);
            safeLeft_.insert(exact);
            deleted = false;
        }
        progress->SetBar(i + 1, belongings.added.size());
        progress->Step();
    }
    return deleted;
}

bool FilesOut::LeavesAnything() const
{
    return !leftOverwritten_.empty() ||
           std::any_of(leftAdded_.begin(), leftAdded_.end(), [&](const OwnedFile& file) {
               return !StaysWithCompactBackup(parts_.preferences, file.name);
           });
}

void FilesOut::RestoreOverwritten(const std::vector<std::string>& names)
{
    if (names.empty())
        return;
    const auto progress =
        parts_.host.BeginProgress(ProgressWindow::Progress, GetMsg(Msg::RestoringChangedFiles));
    std::vector<Path> inTheWay; // a designer's file, or one that came in by another hand
    for (const std::string& name : names) {
        const Path relative = *SafeRelative(name);
        const Path place = PlaceOfOriginal(parts_.folders, relative);
        if (!safeLeft_.contains(ResolvePath(trle_ / place)) && !IsSpared(relative) &&
            IsFile(parts_.folders.Backup() / relative).ValueOr(true))
            inTheWay.push_back(place);
    }
    Keep(inTheWay);
    NameSet back; // whatever stood there, the original does now
    std::vector<std::string> failed;
    std::vector<std::string> owed; // while there is no backup
    const bool away = BackupIsAway(parts_.folders);
    for (std::size_t i = 0; i < names.size(); ++i) {
        const auto relative = SafeRelative(names[i]);
        const auto status = IsSpared(*relative)
                                ? Status{Failure{ErrorCode::Refused, Readable(names[i]), {}}}
                                : RestoreOriginal(parts_.folders, *relative);
        log_ += CopyLine(parts_.folders.Backup() / *relative, trle_ / *relative,
                         static_cast<bool>(status), false);
        // What no backup holds stays missing; what it holds is tried again with the next swap.
        if (!status && IsFile(parts_.folders.Backup() / *relative).ValueOr(true)) {
            leftOverwritten_.push_back(names[i]);
            failed.push_back(Readable(names[i]));
        } else if (!status && away && !StaysWithCompactBackup(parts_.preferences, names[i])) {
            leftOverwritten_.push_back(names[i]);
            owed.push_back(Readable(names[i]));
        }
        if (status)
            back.Add(names[i]);
        progress->SetBar(i + 1, names.size());
        progress->Step();
    }
    std::erase_if(leftAdded_, [&](const OwnedFile& file) { return back.Has(file.name); });
    if (!failed.empty())
        parts_.host.Tell(Tone::Error, GetMsg(Msg::OriginalsNotBack, {ShownNames(failed)}));
    if (!owed.empty())
        parts_.host.Tell(Tone::Error, GetMsg(Msg::OriginalsNoBackup,
                                             {TextOf(parts_.folders.Backup()), ShownNames(owed)}));
}

} // namespace kestrova
