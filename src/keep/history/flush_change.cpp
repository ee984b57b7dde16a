#include "history/flush_change.h"

#include "core/look.h"
#include "core/text.h"

#include <set>

namespace kestrova
{

Status FlushChange(const Folders& folders, const Change& change)
{
    std::vector<Path> places{ResolvePath(folders.program)};
    for (const ChangedFolder& folder : change.folders)
        places.push_back(ResolvePath(folder.folder));
    if (change.moved)
        places.push_back(Path{change.moved->to}.parent_path());
    std::set<std::uint64_t> flushed;
    for (const Path& place : places) {
        const auto facts = LookAt(place);
        if (!facts)
            return facts.Error();
        if (facts->kind != platform::FileKind::Folder || !flushed.insert(facts->device).second)
            continue;
        if (const auto failure = platform::SyncFileSystem(place))
            return MakeFailure(ErrorCode::CannotWrite, TextOf(place), failure);
    }
    return {};
}

} // namespace kestrova
