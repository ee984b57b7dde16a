#include "archive/stored_notes.h"

#include "core/look.h"
#include "core/staged_file.h"
#include "formats/level_folder.h"

namespace kestrova
{

Path StoredNoteOf(const Path& home)
{
    return InFolder(InFolder(home, OnDisk::DirUndoOfLevel), OnDisk::FragStoredNote);
}

Result<std::optional<StoredNote>> ReadStoredNote(const Path& home)
{
    const Path file = StoredNoteOf(home);
    const auto text = ReadFileIfThere(file, longestStoredNote);
    if (!text)
        return text.Error();
    if (!*text)
        return std::optional<StoredNote>{};
    auto note = ParseStoredNote(**text);
    if (!note)
        return MakeFailure(ErrorCode::Damaged, TextOf(file));
    return std::optional{std::move(*note)};
}

Status WriteStoredNote(const Path& home, const StoredNote& note)
{
    const Path file = StoredNoteOf(home);
    if (auto status = MakeFolders(file.parent_path()); !status)
        return status;
    return WriteWholeFile(file, FormatStoredNote(note), false);
}

void DoubtStoredNote(const Path& home)
{
    auto note = ReadStoredNote(home).ValueOr({});
    if (!note || note->changing)
        return;
    note->changing = true;
    (void)WriteStoredNote(home, *note); // at worst a file is told as changed that nobody harmed
}

} // namespace kestrova
