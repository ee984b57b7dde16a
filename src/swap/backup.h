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

bool BackupPresent(const Session& session);
/// Makes the backup unless it is there (`refresh` makes it anew, in full). An old backup is set
/// aside and comes back when the new one does not compare equal.
bool MakeTrleBackup(Session& session, bool refresh, const BackupWishes& wishes = {});
/// The command behind "Create\Refresh full backup", its questions included.
bool RefreshFullBackup(Session& session, const BackupWishes& wishes = {});

/// The full restore: the ordinary removal, then all critical files from the backup.
void RestoreOriginalConfiguration(Session& session, ProgressScope& progress);
/// `Pul_Fast`'s words around `RestoreFast`; True when the dialog may close.
bool RestoreFastWithWords(Session& session);

} // namespace kestrova
