#pragma once

#include "session/session.h"

/// The backup is built beside the old one and exchanged when every file of it compared equal, so
/// that `backup_trle` is a whole backup at any moment.
namespace kestrova
{

Path NewBackupFolder(const Session& session);
/// The new folder becomes the backup, durably; the old one is removed after that.
Status ExchangeBackup(Session& session);
/// What a killed backup left is undone: an old backup that was set aside comes back. False when
/// that is not possible now, which it tells.
bool SettleBackupFolders(Session& session);
bool BackupFoldersWait(const Session& session);

} // namespace kestrova
