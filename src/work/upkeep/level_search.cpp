#include "upkeep/level_search.h"

#include "archive/archive_entries.h"
#include "archive/level_folders.h"
#include "core/look.h"
#include "formats/level_folder_name.h"
#include "formats/trle_folder.h"
#include "levels/unfinished_intake.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// A folder without a mark is a level's; one whose mark has no record never was whole.
bool IsWhole(const Path& folder)
{
    const auto came = WholeIntakeIn(folder);
    return IsFree(IntakeMark(folder)).ValueOr(true) || !came || *came;
}

} // namespace

Result<LevelsFound> FindLevelFolders(const Path& folder)
{
    const auto names = NamesOfArchive(folder);
    if (!names)
        return names.Error();
    LevelsFound found;
    for (const std::string& name : *names) {
        const Path place = folder / name;
        const bool isFolder = platform::FactsOf(place).kind == platform::FileKind::Folder;
        if (IsAsideName(name)) {
            if (isFolder)
                found.setAside.push_back(place);
            continue;
        }
        if (!IsLevelFolderName(name))
            continue;
        const auto code = CodeOfLevelFolder(name);
        // Of several spellings the one counts that the program would take.
        const bool leads = isFolder && code && *code != originalCode &&
                           ResolvePath(InFolder(folder, LevelFolderName(*code))) == place;
        if (!leads)
            found.passedOver.push_back(name);
        else if (IsWhole(place))
            found.codes.push_back(*code);
    }
    std::sort(found.codes.begin(), found.codes.end());
    return found;
}

} // namespace kestrova
