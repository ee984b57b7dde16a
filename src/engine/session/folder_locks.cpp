#include "session/folder_locks.h"

#include "core/look.h"
#include "platform/file_content.h"
#include "platform/file_lock.h"
#include "platform/real_path.h"
#include "session/holder_words.h"

#include <algorithm>
#include <utility>

namespace kestrova
{

namespace
{

constexpr std::size_t wordsLimit = 4096;

bool IsStill(const Path& folder, const platform::FileFacts& facts)
{
    const platform::FileFacts now = platform::FactsOf(folder);
    return now.kind == platform::FileKind::Folder && now.device == facts.device &&
           now.inode == facts.inode;
}

} // namespace

/// The path by which a folder is held; its own when it is not. One folder may be mounted in two
/// places.
Path FolderLocks::HeldAs(Path place) const
{
    if (!held_.contains(place))
        for (const auto& [folder, lock] : held_)
            if (IsSameFolder(folder, place))
                return folder;
    return place;
}

Status FolderLocks::Hold(const Path& folder)
{
    Path place;
    if (const auto unresolved = platform::RealPath(ResolvePath(folder), place))
        return MakeFailure(ErrorCode::Missing, TextOf(folder), unresolved);
    if (const auto known = held_.find(HeldAs(place)); known != held_.end()) {
        if (IsStill(known->first, known->second.facts))
            return {};
        held_.erase(known);
    }
    HeldFolder held{{}, platform::FactsOf(place), WordsOfHolder()};
    std::string holder;
    const auto failure =
        platform::FileLock::Take(place / lockFileName, held.words, held.lock, holder);
    if (failure == std::errc::resource_unavailable_try_again)
        return Failure{ErrorCode::Refused, TextOf(place), holder};
    if (failure && failure != std::errc::read_only_file_system &&
        failure != std::errc::permission_denied)
        return MakeFailure(ErrorCode::CannotWrite, TextOf(place), failure);
    held_[place] = std::move(held);
    return {};
}

bool FolderLocks::Holds(const Path& folder) const
{
    Path place;
    return !platform::RealPath(ResolvePath(folder), place) && held_.contains(HeldAs(place));
}

void FolderLocks::Release(const Path& folder)
{
    Path place;
    if (!platform::RealPath(ResolvePath(folder), place))
        held_.erase(HeldAs(place));
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

bool FolderLocks::CameBack(const Path& folder, HeldFolder& held)
{
    std::string words;
    if (platform::ReadAll(folder / lockFileName, words, wordsLimit) || words != held.words)
        return false;
    platform::FileLock lock;
    std::string holder;
    if (!platform::FileLock::Take(folder / lockFileName, held.words, lock, holder))
        held.lock = std::move(lock);
    held.facts = platform::FactsOf(folder);
    return true;
}

std::vector<Path> FolderLocks::Lost()
{
    std::vector<Path> lost;
    for (auto& [folder, held] : held_)
        if (held.lock.Held() && !IsStill(folder, held.facts) && !CameBack(folder, held))
            lost.push_back(folder);
    return lost;
}

Path FolderLocks::SetArchiveFolder(const Path& folder)
{
    return std::exchange(archiveFolder_, folder);
}

} // namespace kestrova
