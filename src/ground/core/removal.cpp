#include "core/removal.h"

#include "core/look.h"
#include "core/staged_file.h"
#include "platform/files.h"
#include "platform/removal.h"

namespace kestrova
{

namespace
{

/// Names what stayed in words that fit a window, however deep it lies.
std::string ShortSubject(const Path& root, const std::string& stuck)
{
    constexpr std::size_t longest = 500;
    if (stuck.size() <= longest)
        return TextOf(stuck);
    const std::string name = stuck.substr(stuck.rfind('/') + 1);
    return TextOf(root / "..." / name);
}

} // namespace

Status RemoveTree(const Path& folder, const Heartbeat& heartbeat)
{
    const Path place = ResolvePath(folder);
    std::string stuck;
    const auto failure = platform::RemoveTree(place, stuck, heartbeat);
    if (!failure)
        return {};
    if (failure == std::errc::operation_canceled)
        return MakeFailure(ErrorCode::Stopped, TextOf(place));
    return MakeFailure(ErrorCode::CannotDelete, ShortSubject(place, stuck), failure);
}

Status ClearPlace(const Path& place, const Heartbeat& heartbeat)
{
    const auto found = FindPath(place);
    if (!found)
        return found.Error();
    platform::FileFacts facts;
    if (const auto failure = platform::LookAtLink(*found, facts))
        return MakeFailure(ErrorCode::CannotDelete, TextOf(*found), failure);
    if (facts.kind == platform::FileKind::Missing)
        return {};
    auto removed = RemoveTree(*found, heartbeat);
    if (removed || !platform::Rename(*found, StagedNameFor(*found)))
        return {};
    return removed;
}

Path FreshPlaceIn(const Path& folder)
{
    return StagedNameFor(folder / stagedPrefix);
}

WorkFolder::WorkFolder(Path folder, Make make, Heartbeat alive)
    : folder_(std::move(folder)), alive_(alive ? [alive] { return alive(), true; } : Heartbeat{})
{
    if (make != Make::IsMade)
        clear_ = ClearPlace(folder_);
    if (make == Make::Now)
        (void)MakeFolders(folder_);
}

WorkFolder::~WorkFolder()
{
    (void)ClearPlace(folder_, alive_); // what stays is cleared by the next use
}

Result<Path> RenameToFree(const Path& file, const Path& place)
{
    auto name = IsFree(place).ValueOr(false) ? Result<Path>{place} : FreeNumbered(place);
    if (!name)
        return name;
    if (const auto failure = platform::Rename(file, *name))
        return MakeFailure(ErrorCode::CannotWrite, TextOf(file), failure);
    return name;
}

Result<Path> RenameAside(const Path& file)
{
    return RenameToFree(file, file);
}

} // namespace kestrova
