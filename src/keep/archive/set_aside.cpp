#include "archive/set_aside.h"

#include "archive/level_folders.h"
#include "core/copying.h"
#include "core/dates.h"
#include "core/look.h"
#include "core/text.h"
#include "formats/level_folder_name.h"
#include "formats/program_folder.h"
#include "words/message.h"

#include <algorithm>

namespace kestrova
{

Result<bool> HoldsAnything(const Path& folder)
{
    const auto tree = ScanTree(folder);
    if (!tree)
        return tree.Error();
    return !tree->files.empty();
}

Result<Path> NameForAside(const Path& folder, std::int64_t nowNs)
{
    std::string time = DateText(nowNs);
    std::replace(time.begin(), time.end(), ' ', '_');
    std::replace(time.begin(), time.end(), ':', '.');
    return FirstFree([&](int n) {
        const std::string again = n == 1 ? std::string{} : '-' + std::to_string(n);
        return folder.parent_path() /
               Filled(OnDisk::FragSetAside, {folder.filename().native(), time + again});
    });
}

Result<std::vector<Path>> SetAside(Machine& machine, const Path& folder)
{
    std::vector<Path> names;
    const auto twins = CaseTwins(folder);
    if (!twins)
        return twins.Error();
    for (const Path& twin : *twins) {
        auto name = NameForAside(twin, machine.NowNs());
        if (!name)
            return name.Error();
        if (const auto failure = platform::Rename(twin, *name))
            return MakeFailure(ErrorCode::CannotWrite, TextOf(twin), failure);
        names.push_back(std::move(*name));
    }
    if (const auto flushed = FlushFolder(folder.parent_path()); !flushed)
        return flushed.Error();
    return names;
}

Result<UnknownFolders> FindUnknownFolders(const Archive& archive)
{
    UnknownFolders found;
    const Path root = FolderFromText(Trim(archive.header.secondaryFolder));
    if (!archive.Loaded() || root.empty())
        return found;
    std::vector<std::string> known;
    for (const LevelRecord& level : archive.levels)
        if (level.levelCode != originalCode)
            known.push_back(LevelFolderName(level.levelCode).substr(1));
    std::sort(known.begin(), known.end());
    const std::string mark = Filled(OnDisk::FragSetAside, {"", ""});
    const auto folders = ListSubfolders(root);
    if (!folders)
        return folders.Error();
    for (const Path& folder : *folders) {
        const std::string name = folder.filename().native();
        if (name.find(mark) != std::string::npos)
            found.setAside.push_back(folder);
        else if (IsLevelFolderName(name) &&
                 !std::binary_search(known.begin(), known.end(), UpperCase(name)))
            found.unlisted.push_back(folder);
    }
    return found;
}

} // namespace kestrova
