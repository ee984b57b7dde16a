#include "swap/swap_preview.h"

#include "archive/level_folders.h"
#include "core/look.h"
#include "core/name_set.h"
#include "formats/trle_folder.h"
#include "platform/file_content.h"
#include "platform/folder_memory.h"
#include "storage/game_files.h"
#include "swap/file_names.h"
#include "swap/placements.h"
#include "words/swap.h"

#include <algorithm>
#include <unordered_map>

namespace kestrova
{

namespace
{

/// The folder as it will be once the old level is out.
struct Foresight {
    NameSet gone;     ///< what the old level brought
    NameSet restored; ///< what comes back

    [[nodiscard]] bool WillStand(const Folders& folders, const std::string& name) const
    {
        const auto relative = SafeRelative(name);
        return relative &&
               (restored.Has(name) || (!gone.Has(name) && FileExists(folders.trle / *relative)));
    }
};

void PlanRemoval(const Folders& folders, const PreferencesRecord& preferences,
                 const Belongings& belongings, std::vector<PlannedFile>& plan, Foresight& foresight)
{
    for (const OwnedFile& file : belongings.added) {
        const auto relative = SafeRelative(file.name);
        const Path place = folders.trle / *relative;
        if (StaysWithCompactBackup(preferences, file.name) || !FileExists(place))
            continue;
        plan.push_back({PlannedAction::Remove, Readable(file.name), FileSize(place)});
        foresight.gone.Add(file.name);
    }
    for (const std::string& name : belongings.overwritten) {
        const Path pristine = folders.Backup() / *SafeRelative(name);
        if (!FileExists(pristine))
            continue;
        plan.push_back({PlannedAction::Restore, Readable(name), FileSize(pristine)});
        foresight.restored.Add(name);
    }
}

/// The `*.dat` files of the root once the old level is out, in listing order.
Result<std::vector<Path>> DatFilesToCome(const Folders& folders, const Foresight& foresight)
{
    std::vector<Path> files;
    NameSet known;
    for (const Path& folder : {folders.trle, folders.Backup()}) {
        const auto found = ListFiles(folder, OnDisk::PatDat);
        if (!found)
            return found.Error();
        for (const Path& file : *found) {
            const std::string name = file.filename().native();
            if (known.Has(name) ||
                !foresight.WillStand(folders, std::string{OnDisk::FragRoot} + name))
                continue;
            known.Add(name);
            files.push_back(file);
        }
    }
    std::sort(files.begin(), files.end(), [](const Path& a, const Path& b) {
        return UpperCase(a.filename().native()) < UpperCase(b.filename().native());
    });
    return files;
}

} // namespace

Result<std::vector<PlannedFile>> PlanSwap(const Folders& folders, const Archive& archive,
                                          const PreferencesRecord& preferences, LevelCode code)
{
    if (FindLevel(archive, code) < 0)
        return Failure{
            ErrorCode::Missing, GetMsg(Msg::UnknownLevelCode, {std::to_string(code)}), {}};
    const platform::FolderMemory remembered;
    std::vector<PlannedFile> plan;
    const auto standing = LookAtStanding(folders, archive);
    if (!standing)
        return standing.Error();
    if (LevelStands(folders, archive, code))
        return plan;
    const auto belongings = StandingBelongings(folders, *standing);
    if (!belongings)
        return belongings.Error();
    Foresight foresight;
    PlanRemoval(folders, preferences, *belongings, plan, foresight);
    if (code == originalCode)
        return plan;
    const auto source = FilesFolderOf(folders, archive, code, DiscWish::Look);
    if (!source)
        return source.Error();
    const auto files = PlanLevelFiles(*source);
    if (!files)
        return files.Error();
    std::vector<std::string> refused;
    const std::vector<Placement> placements = PlaceFiles(*files, refused);
    for (const Placement& placement : placements)
        plan.push_back({foresight.WillStand(folders, placement.target) ? PlannedAction::Overwrite
                                                                       : PlannedAction::Add,
                        Readable(placement.target), placement.file.size});
    const auto present = DatFilesToCome(folders, foresight);
    if (!present)
        return present.Error();
    const std::string language = LanguageFileToRemove(*present, placements);
    if (!language.empty())
        plan.push_back(
            {PlannedAction::Remove, Readable(std::string{OnDisk::FragRoot} + language),
             std::max(FileSize(folders.trle / language), FileSize(folders.Backup() / language))});
    return plan;
}

} // namespace kestrova
