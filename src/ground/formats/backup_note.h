#pragma once

#include "formats/disc_note.h"
#include "formats/swap_journal.h"

/// The note of what the backup of the originals held when it was made, `swap/backup-content` of the
/// program's folder. It counts for that very folder alone; a file that it does not name is not
/// known. JSON; names are kept exactly (bytes that are no UTF-8, and the per cent sign, as %XX).
///
///     {"version": 1, "path": "/home/…/backup_trle", "device": 2049, "inode": 4711,
///      "files": [{"name": "data/title.tr4", "size": 4711, "hash": "HASH"}, …]}
namespace kestrova
{

struct BackupNote {
    FolderMark backup;
    std::vector<NotedFile> files; ///< by name, parts joined by `/`
};

/// No note is longer.
inline constexpr std::uint64_t longestBackupNote = UINT64_C(256) << 20;

std::string FormatBackupNote(const BackupNote& note);
/// `Damaged` for what this program did not write.
Result<BackupNote> ParseBackupNote(std::string_view text);

} // namespace kestrova
