#include "originals/folder_in_the_way.h"

#include "core/copying.h"
#include "core/look.h"
#include "core/removal.h"
#include "formats/program_folder.h"
#include "originals/standing_tree.h"

namespace kestrova
{

Status RemoveFolderInTheWay(Machine& machine, const Folders& folders, const Path& root,
                            const Path& relative)
{
    const Path place = root / relative;
    platform::FileFacts facts;
    if (const auto failure = platform::LookAtLink(place, facts))
        return MakeFailure(ErrorCode::CannotRead, TextOf(place), failure);
    if (facts.kind != platform::FileKind::Folder)
        return {};
    const auto tree = TreeOf(place, {false, {}, true});
    if (!tree)
        return tree.Error();
    std::vector<Path> files;
    for (const StandingFile& file : tree->files)
        files.push_back(relative / file.name);
    Keeping keeping = KeepReplaced(machine, folders, root, files);
    if (!keeping.failed.empty())
        return std::move(keeping.failure);
    for (const Path& file : files)
        if (auto gone = DeleteSpelled(root / file); !gone)
            return gone;
    for (const StandingLink& link : tree->links)
        if (auto gone = DeleteSpelled(place / link.name); !gone)
            return gone;
    for (const Path& other : tree->others)
        if (auto gone = RemoveTree(place / other); !gone)
            return gone;
    for (auto folder = tree->folders.rbegin(); folder != tree->folders.rend(); ++folder)
        (void)platform::RemoveFolder(place / folder->name); // the last step tells of one that stays
    if (const auto failure = platform::RemoveFolder(place))
        return MakeFailure(ErrorCode::CannotDelete, TextOf(place), failure);
    return {};
}

Status MoveUnreadable(const Folders& folders, const Path& root, const Path& relative)
{
    const Path file = root / relative;
    const Path plain = InFolder(folders.program, OnDisk::DirHistoryOriginals) / relative;
    if (auto made = MakeFolders(plain.parent_path()); !made)
        return made;
    const auto place = FirstFree([&](int number) {
        return number == 1 ? plain : Path{plain.native() + "." + std::to_string(number)};
    });
    if (!place)
        return place.Error();
    if (const auto failure = platform::Rename(file, *place))
        return MakeFailure(ErrorCode::CannotWrite, TextOf(file), failure);
    return FlushFolder(place->parent_path());
}

} // namespace kestrova
