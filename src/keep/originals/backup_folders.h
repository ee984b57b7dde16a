#pragma once

#include "formats/preferences.h"
#include "formats/swap_journal.h"
#include "session/folders.h"
#include "session/host.h"

/// The backup is built beside the old one and exchanged when every file of it compared equal, so
/// that `backup_trle` is a whole backup at any moment. It is known which Level Editor's folder a
/// backup is of; the backup of another folder is set aside as `backup_trle_1` and on.
namespace kestrova
{

Path NewBackupFolder(const Folders& folders);
/// The new folder becomes the backup of the present Level Editor's folder, durably. The old one is
/// removed after that, or set aside when it is of another folder (`keepAside`).
Status ExchangeBackup(const Folders& folders, bool full, bool keepAside);
/// What a killed backup left is undone: an old backup that was set aside comes back. Fails when
/// that is not possible now.
Status SettleBackupFolders(const Folders& folders);
bool BackupFoldersWait(const Folders& folders);

/// The folder that the backup was made of; no value when nobody noted it.
Result<std::optional<FolderMark>> BackupOrigin(const Folders& folders);
/// Notes that the backup is of the present Level Editor's folder.
Status NoteBackupOrigin(const Folders& folders, bool full);
/// A backup of the present Level Editor's folder that was set aside takes its place again; the
/// preferences learn its form. False when there is none.
Result<bool> BringBackupBack(const Folders& folders, PreferencesRecord& preferences);

} // namespace kestrova
