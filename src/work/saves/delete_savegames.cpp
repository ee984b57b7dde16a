#include "saves/delete_savegames.h"

#include "formats/level_folder.h"
#include "history/changes.h"
#include "history/standing.h"
#include "platform/places.h"
#include "saves/archive_slots.h"
#include "saves/savegame_moves.h"
#include "saves/savegame_plan.h"
#include "saves/savegame_store.h"
#include "session/operation.h"
#include "words/level_savegames.h"

#include <map>

namespace kestrova
{

namespace
{

/// The plan without the chosen ones. `archived` gets how many of them lay in archive slots.
Status PlanDeletion(const std::vector<LevelSavegame>& chosen, SavegamePlan& plan, int& archived)
{
    std::map<Path, SavegamePlan::Folder> folders;
    for (const LevelSavegame& one : chosen) {
        if (one.place == SavegamePlace::History)
            continue;
        const Path folder = one.file.parent_path();
        if (!folders.contains(folder)) {
            const auto added = plan.AddFolder(folder);
            if (!added)
                return added.Error();
            folders.emplace(folder, *added);
        }
        const std::string name = one.file.filename().native();
        if (!plan.Has(folders.at(folder), name))
            continue; // gone meanwhile
        plan.DeleteSavegame(folders.at(folder), name);
        archived += one.place == SavegamePlace::Slot ? 1 : 0;
    }
    return {};
}

} // namespace

Status DeleteSavegames(const ArchiveParts& parts, LevelCode code,
                       const std::vector<LevelSavegame>& chosen)
{
    const Operation operation{parts};
    if (auto ready = EndEarlierMove(parts); !ready)
        return ready;
    const auto live = LiveStateFolder(parts.folders, parts.archive, code);
    const auto store = LoadSavegameStore(parts.folders, parts.preferences, code);
    if (!live || !store)
        return live ? store.Error() : live.Error();
    SavegamePlan plan;
    int archived = 0;
    if (auto planned = PlanDeletion(chosen, plan, archived); !planned)
        return planned;
    auto folders = plan.Changes();
    if (!folders)
        return folders.Error();

    Change change = NewChange(parts, ChangeKind::SavegamesDeleted, code);
    change.reason = Told(Msg::ReasonSavegameDeleted);
    change.subject = std::to_string(chosen.size());
    change.header = platform::AbsolutePath(SlotsRootOf(parts.folders, code) /
                                           FileNameOf(OnDisk::FragSavegameHeader))
                        .native();
    change.archivedBefore = store->header.archivedCount;
    change.archivedCount = store->header.archivedCount - archived;
    change.live = ResolvePath(*live).native();
    change.folders = std::move(*folders);
    auto status = MakeChange(parts, change);
    if (status) {
        WriteArchivedCount(change, change.archivedCount);
        status = EndChange(parts.folders, parts.settings, change);
    }
    return status;
}

} // namespace kestrova
