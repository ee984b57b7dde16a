#include "session/held_folders.h"

#include "core/look.h"
#include "platform/real_path.h"
#include "session/telling.h"
#include "words/common.h"
#include "words/session.h"

namespace kestrova
{

Status HoldFolder(FolderLocks& locks, const Path& folder)
{
    if (folder.empty())
        return {};
    const auto isThere = IsFolder(folder);
    if (!isThere)
        return FolderNotRead(isThere.Error());
    if (!*isThere)
        return {};
    auto status = locks.Hold(folder);
    if (status)
        return {};
    Failure failure = status.Error();
    if (failure.code != ErrorCode::Refused)
        return Saying(GetMsg(Msg::FolderNotLocked, {TextOf(folder)}), std::move(failure));
    const std::string holder =
        failure.reason.empty() ? GetMsg(Msg::LockWordsNone) : std::exchange(failure.reason, {});
    failure.subject = TextOf(folder);
    return Saying(GetMsg(Msg::HeldByAnother, {TextOf(folder), holder}), std::move(failure));
}

Status HoldArchiveFolder(FolderLocks& locks, const Folders& folders, const Path& folder)
{
    if (auto status = HoldFolder(locks, folder); !status)
        return status;
    const Path before = locks.SetArchiveFolder(folder);
    const auto isOneOf = [&](const Path& other) { return platform::IsSameFile(before, other); };
    if (!before.empty() && !isOneOf(folder) && !isOneOf(folders.program) && !isOneOf(folders.trle))
        locks.Release(before);
    return {};
}

Status HoldFolders(FolderLocks& locks, const Folders& folders)
{
    for (const Path& folder : {folders.program, folders.trle})
        if (auto status = HoldFolder(locks, folder); !status)
            return status;
    return HoldArchiveFolder(locks, folders, folders.levels);
}

} // namespace kestrova
