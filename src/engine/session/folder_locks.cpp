#include "session/folder_locks.h"

#include "core/look.h"
#include "platform/file_lock.h"
#include "platform/real_path.h"
#include "session/holder_words.h"

#include <algorithm>
#include <utility>

namespace kestrova
{

namespace
{

/// The path by which a folder is held; its own when it is not. One folder may be mounted in two
/// places.
Path HeldAs(const std::map<Path, platform::FileLock>& held, Path place)
{
    if (!held.contains(place))
        for (const auto& [folder, lock] : held)
            if (IsSameFolder(folder, place))
                return folder;
    return place;
}

} // namespace

Status FolderLocks::Hold(const Path& folder)
{
    Path place;
    if (const auto unresolved = platform::RealPath(ResolvePath(folder), place))
        return MakeFailure(ErrorCode::Missing, TextOf(folder), unresolved);
    if (held_.contains(HeldAs(held_, place)))
        return {};
    platform::FileLock lock;
    std::string holder;
    const auto failure =
        platform::FileLock::Take(place / lockFileName, WordsOfHolder(), lock, holder);
    if (failure == std::errc::resource_unavailable_try_again)
        return Failure{ErrorCode::Refused, TextOf(place), holder};
    if (failure && failure != std::errc::read_only_file_system &&
        failure != std::errc::permission_denied)
        return MakeFailure(ErrorCode::CannotWrite, TextOf(place), failure);
    held_[place] = std::move(lock);
    return {};
}

bool FolderLocks::Holds(const Path& folder) const
{
    Path place;
    return !platform::RealPath(ResolvePath(folder), place) && held_.contains(HeldAs(held_, place));
}

void FolderLocks::Release(const Path& folder)
{
    Path place;
    if (!platform::RealPath(ResolvePath(folder), place))
        held_.erase(HeldAs(held_, place));
}

std::vector<Path> FolderLocks::Held() const
{
    std::vector<Path> folders;
    for (const auto& [folder, lock] : held_)
        folders.push_back(folder);
    return folders;
}

void FolderLocks::KeepOnly(const std::vector<Path>& held)
{
    std::erase_if(held_, [&](const auto& lock) {
        return std::find(held.begin(), held.end(), lock.first) == held.end();
    });
}

Path FolderLocks::SetArchiveFolder(const Path& folder)
{
    return std::exchange(archiveFolder_, folder);
}

} // namespace kestrova
