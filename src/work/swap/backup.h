#pragma once

#include "session/session.h"

/// The copy of the original Level Editor's files in `backup_trle`.
namespace kestrova
{

enum class BackupForm { Ask, Full, Compact };

struct BackupWishes {
    BackupForm form = BackupForm::Ask;
    /// The person said beforehand that the folder is original: the question is not asked.
    bool folderIsOriginal = false;
};

enum class BackupState { Missing, Present };
Result<BackupState> LookAtBackup(const Folders& folders);
/// True while nothing can come back from the backup: it is not there, or cannot be listed.
bool BackupIsAway(const Folders& folders);
/// The folder that the backup is of, when that is another one than the Level Editor's folder in
/// use and its files are not the same. Compares contents only while the folder was newly chosen; a
/// failure when the backup cannot be listed for that.
Result<std::optional<Path>> BackupOfAnotherFolder(Host& host, const Folders& folders,
                                                  const PreferencesRecord& preferences);
/// The same by what was noted alone: nothing is read but that.
Result<std::optional<Path>> BackupSeemsOfAnother(const Folders& folders);
/// Makes the backup unless it is there (`refresh` makes it anew, in full). An old backup stays
/// until the new one compared equal. When the backup is of another folder, one of this folder that
/// was set aside comes back, or the person is asked for a new one.
bool MakeTrleBackup(Session& session, bool refresh, const BackupWishes& wishes = {});
/// The command behind "Create\Refresh full backup", its questions included.
bool RefreshFullBackup(Session& session, const BackupWishes& wishes = {});

} // namespace kestrova
