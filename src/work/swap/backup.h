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

/// Makes the backup unless it is there (`refresh` makes it anew, in full). An old backup stays
/// until the new one compared equal. When the backup is of another folder, one of this folder that
/// was set aside comes back, or the person is asked for a new one.
bool MakeTrleBackup(Session& session, bool refresh, const BackupWishes& wishes = {});
/// The command behind "Create\Refresh full backup", its questions included.
bool RefreshFullBackup(Session& session, const BackupWishes& wishes = {});

} // namespace kestrova
