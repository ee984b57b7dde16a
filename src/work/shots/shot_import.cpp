#include "shots/shot_import.h"

#include "archive/level_folders.h"
#include "core/copying.h"
#include "formats/level_folder.h"
#include "session/telling.h"
#include "shots/file_names.h"
#include "shots/shot_changes.h"
#include "shots/shot_files.h"
#include "words/shots.h"

#include <functional>

namespace kestrova
{

namespace
{

using ShowSteps = std::function<void(std::size_t done, std::size_t total)>;

ImportedShots Import(Host& host, const ChangeParts& parts, std::size_t index,
                     const ShowSteps& shown)
{
    const LevelRecord& level = parts.archive.levels[index];
    const Path store = InFolder(LevelHomeOf(parts.folders, level.levelCode), OnDisk::DirSavegames);
    auto tree = ScanTreeIfThere(store);
    if (tree)
        std::erase_if(tree->files, [](const Path& file) {
            const std::string name = file.filename().native();
            return !EndsWithName(name, OnDisk::ShotBmpExtension) &&
                   !EndsWithName(name, OnDisk::ShotJpgExtension);
        });
    if (tree && tree->files.empty())
        return {};
    const auto room =
        tree ? MakeFolder(ShotFolderOf(parts.folders, level.levelCode)) : Status{tree.Error()};
    if (!room) {
        TellFailure(host, GetMsg(Msg::ShotImportUnread, {Trim(level.levelName)}), room.Error());
        return {false, 0};
    }
    bool all = true;
    std::vector<Path> came;
    for (std::size_t i = 0; i < tree->files.size(); ++i) {
        const Path& file = tree->files[i];
        std::string extension;
        const auto target = NewShotName(parts.folders, parts.archive, index, extension);
        const auto copied = target ? CopyFileOver(file, *target) : target.Error();
        if (copied)
            came.push_back(*target);
        if (!copied) {
            all = false;
            TellFailure(host,
                        GetMsg(Msg::ShotImportFailed) + TextOf(file) +
                            GetMsg(Msg::ShotImportArrow) +
                            (target ? TextOf(*target) : target.Error().subject),
                        copied.Error());
        }
        shown(i + 1, tree->files.size());
    }
    NoteNewShots(
        parts.folders, parts.settings,
        ShotChange(parts, ChangeKind::ShotsImported, level.levelCode, std::to_string(came.size())),
        came);
    return {all, came.size()};
}

} // namespace

ImportedShots ImportShots(Host& host, const ChangeParts& parts, std::size_t index,
                          ProgressScope& progress)
{
    return Import(host, parts, index, [&](std::size_t done, std::size_t total) {
        progress.SetBar(done, total);
        (void)progress.Step(); // it offers no stop
    });
}

ImportedShots ImportShotsOfAllLevels(Host& host, const ChangeParts& parts, ProgressScope& progress)
{
    ImportedShots imported;
    for (std::size_t index = 0; index < parts.archive.levels.size(); ++index) {
        const ImportedShots ofLevel =
            Import(host, parts, index, [&](std::size_t, std::size_t) { (void)progress.Step(); });
        imported.all = imported.all && ofLevel.all;
        imported.pictures += ofLevel.pictures;
        progress.SetBar(index + 1, parts.archive.levels.size());
        (void)progress.Step(); // it offers no stop
    }
    return imported;
}

} // namespace kestrova
