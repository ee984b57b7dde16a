#include "saves/bring_back.h"

#include "core/look.h"
#include "formats/level_folder.h"
#include "history/history.h"
#include "history/standing.h"
#include "swap/state_files.h"
#include "words/saves.h"

namespace kestrova
{

namespace
{

/// Where a kept file of the level belongs.
Result<Path> PlaceFor(Session& session, LevelCode code, const HistoryEntry& entry)
{
    if (!entry.picture)
        return LiveStateFolder(session, code);
    Path folder = ResolvePath(InFolder(LevelHomeOf(session, code), OnDisk::DirScreenshots));
    if (auto status = MakeFolders(folder); !status)
        return status.Error();
    return folder;
}

} // namespace

Result<Path> BringBack(Session& session, LevelCode code, const std::string& id)
{
    const auto entry = HistoryEntryOf(session, code, id);
    if (!entry)
        return entry.Error();
    const Path level = LevelHomeOf(session, code);
    const auto isThere = IsFolder(level);
    if (!isThere)
        return isThere.Error();
    if (!*isThere)
        return Failure{ErrorCode::Missing, {}, GetMsg(Msg::HistoryLevelGone, {TextOf(level), id})};
    const auto home = PlaceFor(session, code, *entry);
    if (!home)
        return home;
    return CopyOutOfHistory(session, *entry, ResolvePath(*home));
}

} // namespace kestrova
