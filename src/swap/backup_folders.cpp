#include "swap/backup_folders.h"

#include "catalogue/message.h"

namespace kestrova
{

namespace
{

Path OldBackupFolder(const Session& session)
{
    return InFolder(session.programFolder, RowText(Msg::DirOldBackup));
}

Status Renamed(const Path& from, const Path& to)
{
    if (const auto failure = platform::Rename(from, to))
        return MakeFailure(ErrorCode::CannotWrite, TextOf(to), failure);
    return {};
}

} // namespace

Path NewBackupFolder(const Session& session)
{
    return InFolder(session.programFolder, RowText(Msg::DirNewBackup));
}

Status ExchangeBackup(Session& session)
{
    const Path backup = session.BackupFolder();
    const Path fresh = NewBackupFolder(session);
    const Path old = OldBackupFolder(session);
    if (const auto failure = platform::SyncFileSystem(fresh))
        return MakeFailure(ErrorCode::CannotWrite, TextOf(fresh), failure);
    const bool replaces = FolderExists(backup);
    if (replaces)
        if (auto status = Renamed(backup, old); !status)
            return status;
    if (auto status = Renamed(fresh, backup); !status) {
        if (replaces)
            (void)Renamed(old, backup); // the next start tries again
        return status;
    }
    if (auto status = FlushFolder(session.programFolder); !status) {
        if (replaces && Renamed(backup, fresh))
            (void)Renamed(old, backup); // the next start tries again
        return status;
    }
    if (replaces)
        (void)RemoveTree(old); // complete already; the next start clears what is left
    return {};
}

bool SettleBackupFolders(Session& session)
{
    const Path backup = session.BackupFolder();
    const Path old = OldBackupFolder(session);
    Status status;
    if (FolderExists(old))
        status = FolderExists(backup) ? RemoveTree(old) : Renamed(old, backup);
    if (status && FolderExists(NewBackupFolder(session)))
        status = RemoveTree(NewBackupFolder(session));
    if (!status && !FolderExists(backup)) {
        TellFailure(session, GetMsg(Msg::InterruptedFailed), status.Error());
        return false;
    }
    return true; // leftovers beside a whole backup do no harm and are cleared another time
}

bool BackupFoldersWait(const Session& session)
{
    return FolderExists(OldBackupFolder(session)) || FolderExists(NewBackupFolder(session));
}

} // namespace kestrova
