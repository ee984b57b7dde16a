#include "saves/bring_back.h"

#include "core/look.h"
#include "formats/level_folder.h"
#include "history/changes.h"
#include "history/history.h"
#include "history/standing.h"
#include "swap/live_state.h"
#include "words/saves.h"

namespace kestrova
{

namespace
{

/// Where a kept file of the level belongs.
Result<Path> PlaceFor(const Folders& folders, const Archive& archive, LevelCode code,
                      const HistoryEntry& entry)
{
    if (!entry.picture)
        return LiveStateFolder(folders, archive, code);
    Path folder = ResolvePath(InFolder(LevelHomeOf(folders, code), OnDisk::DirScreenshots));
    if (auto status = MakeFolders(folder); !status)
        return status.Error();
    return folder;
}

} // namespace

Result<Path> BringBack(const ChangeParts& parts, LevelCode code, const std::string& id)
{
    const auto entry = HistoryEntryOf(parts.folders, code, id);
    if (!entry)
        return entry.Error();
    const Path level = LevelHomeOf(parts.folders, code);
    const auto isThere = IsFolder(level);
    if (!isThere)
        return isThere.Error();
    if (!*isThere)
        return Failure{ErrorCode::Missing, {}, GetMsg(Msg::HistoryLevelGone, {TextOf(level), id})};
    const auto home = PlaceFor(parts.folders, parts.archive, code, *entry);
    if (!home)
        return home;
    const Path folder = ResolvePath(*home);
    auto place = CopyOutOfHistory(parts.folders, *entry, folder);
    auto came = place ? FilesThatCame(folder, {*place}) : place.Error();
    if (!came)
        return place;
    Change change = NewChange(parts, ChangeKind::SavegameBroughtBack, code);
    change.subject = place->filename().native();
    if (!entry->picture)
        change.live = folder.native();
    change.folders = {std::move(came).Value()};
    NoteDone(parts.folders, parts.settings, change);
    return place;
}

} // namespace kestrova
