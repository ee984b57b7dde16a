#include "formats/backup_note.h"

#include "formats/noted_files_json.h"

namespace kestrova
{

namespace
{

constexpr int backupNoteVersion = 1;

} // namespace

std::string FormatBackupNote(const BackupNote& note)
{
    return WrittenLine({{"version", backupNoteVersion},
                        {"path", Encoded(note.backup.path)},
                        {"device", note.backup.device},
                        {"inode", note.backup.inode},
                        {"files", JsonOf(note.files)}});
}

Result<BackupNote> ParseBackupNote(std::string_view text)
{
    const NoteJson json = ParseNote(text);
    NoteReader reader{json};
    BackupNote note;
    const int version = reader.Number<int>("version");
    note.backup.path = reader.Text("path");
    note.backup.device = reader.Number<std::uint64_t>("device");
    note.backup.inode = reader.Number<std::uint64_t>("inode");
    if (!ReadNotedFiles(reader, note.files) || !reader.Good() || version != backupNoteVersion)
        return Failure{ErrorCode::Damaged, {}, {}};
    return note;
}

} // namespace kestrova
