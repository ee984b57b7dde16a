#include "library/level_covers.h"

#include "archive/level_folders.h"
#include "core/file_kinds.h"
#include "core/text.h"
#include "formats/level_folder.h"

#include <algorithm>

namespace kestrova
{

CoverPlaces CoverPlacesOf(const Folders& folders, LevelCode code, const LevelNote& note)
{
    const Path home = LevelHomeOf(folders, code);
    return {InFolder(home, OnDisk::DirScreenshots), InFolder(home, OnDisk::DirFiles), note.cover};
}

Path FindCover(const CoverPlaces& places)
{
    std::vector<Path> files;
    for (const std::string_view pattern : {OnDisk::PatBmp, OnDisk::PatShotJpg}) {
        const auto some = ListFiles(places.screenshots, pattern).ValueOr({});
        files.insert(files.end(), some.begin(), some.end());
    }
    const auto chosen = std::find_if(files.begin(), files.end(), [&](const Path& file) {
        return EqualNames(file.filename().native(), places.chosen);
    });
    if (chosen != files.end())
        return *chosen;
    if (!files.empty())
        return files.front();
    for (const std::string_view name : {OnDisk::LoadJpg, OnDisk::LoadBmp})
        if (const auto found = ListFiles(places.files, name).ValueOr({}); !found.empty())
            return found.front();
    return {};
}

} // namespace kestrova
