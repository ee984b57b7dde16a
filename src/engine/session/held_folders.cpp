#include "session/held_folders.h"

#include "core/look.h"
#include "platform/real_path.h"
#include "session/telling.h"
#include "words/common.h"
#include "words/session.h"

namespace kestrova
{

bool HoldFolder(Host& host, FolderLocks& locks, const Path& folder)
{
    if (folder.empty())
        return true;
    const auto isThere = IsFolder(folder);
    if (!isThere)
        return TellFolderNotRead(host, isThere.Error());
    if (!*isThere)
        return true;
    const auto status = locks.Hold(folder);
    if (status)
        return true;
    if (status.Error().code == ErrorCode::Refused)
        host.Tell(Tone::Error,
                  GetMsg(Msg::HeldByAnother,
                         {TextOf(folder), status.Error().reason.empty() ? GetMsg(Msg::LockWordsNone)
                                                                        : status.Error().reason}));
    else
        TellFailure(host, GetMsg(Msg::FolderNotLocked, {TextOf(folder)}), status.Error());
    return false;
}

bool HoldArchiveFolder(Host& host, FolderLocks& locks, const Folders& folders, const Path& folder)
{
    if (!HoldFolder(host, locks, folder))
        return false;
    const Path before = locks.SetArchiveFolder(folder);
    const auto isOneOf = [&](const Path& other) { return platform::IsSameFile(before, other); };
    if (!before.empty() && !isOneOf(folder) && !isOneOf(folders.program) && !isOneOf(folders.trle))
        locks.Release(before);
    return true;
}

bool HoldFolders(Host& host, FolderLocks& locks, const Folders& folders)
{
    return HoldFolder(host, locks, folders.program) && HoldFolder(host, locks, folders.trle) &&
           HoldArchiveFolder(host, locks, folders, folders.levels);
}

} // namespace kestrova
