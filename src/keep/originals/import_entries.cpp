#include "originals/import_entries.h"

#include "core/copying.h"
#include "core/file_kinds.h"
#include "core/look.h"
#include "core/removal.h"
#include "core/staged_file.h"
#include "core/text.h"
#include "formats/program_folder.h"
#include "formats/record_json.h"
#include "history/undo_entries.h"
#include "history/work_note.h"
#include "originals/backup_sums.h"
#include "originals/file_names.h"

#include <algorithm>
#include <set>

namespace kestrova
{

namespace
{

constexpr std::uint64_t longestImportNote = UINT64_C(64) << 20;

Path ImportNotePath(const Folders& folders)
{
    return InFolder(folders.program, OnDisk::FragImport);
}

std::string NameOfImport(std::int32_t id)
{
    return ZeroPadded(id, 6);
}

Path EntryOfImport(const Folders& folders, std::int32_t id)
{
    return InFolder(folders.program, OnDisk::DirImports) /
           (NameOfImport(id) + std::string{OnDisk::EndingImport});
}

struct ImportEntries {
    std::vector<ImportNote> all; ///< oldest first
    std::set<std::int32_t> used; ///< those that another one did or undid
};

Result<ImportEntries> ReadEntries(const Folders& folders)
{
    const auto files = ListFiles(InFolder(folders.program, OnDisk::DirImports), OnDisk::PatImports);
    if (!files)
        return files.Error();
    ImportEntries entries;
    for (const Path& file : *files) {
        const auto text = ReadFileIfThere(file, longestImportNote);
        auto note = text && *text ? ParseImportNote(**text)
                                  : Result<ImportNote>{MakeFailure(ErrorCode::Damaged, {})};
        if (!note || note->phase != ImportPhase::Done || file != EntryOfImport(folders, note->id))
            continue;
        entries.used.insert(note->undoes);
        entries.all.push_back(std::move(*note));
    }
    std::sort(entries.all.begin(), entries.all.end(),
              [](const ImportNote& a, const ImportNote& b) { return a.id < b.id; });
    return entries;
}

/// What a killed undoing had begun to keep, and what an entry left that could not go whole.
void ClearContentsWithoutEntry(const Folders& folders)
{
    const auto kept = ListSubfolders(InFolder(folders.program, OnDisk::DirImports));
    if (!kept || ImportWaits(folders))
        return;
    for (const Path& folder : *kept) {
        const std::int32_t id = LeadingNumber(folder.filename().native());
        if (id > 0 && folder == ImportContents(folders, id) &&
            IsFree(EntryOfImport(folders, id)).ValueOr(false))
            DropImport(folders, id);
    }
}

} // namespace

Path RootOf(const Folders& folders, ImportTree tree)
{
    return tree == ImportTree::LevelEditor ? folders.trle : folders.Backup();
}

Path PlaceOfImport(const Folders& folders, const ImportPlace& place)
{
    return RootOf(folders, place.tree) / SafeRelative(place.name).Value();
}

Result<std::string> HashOfPlace(const Folders& folders, const ImportPlace& place)
{
    const Path file = PlaceOfImport(folders, place);
    const auto facts = LookAtSpelled(file);
    if (!facts)
        return facts.Error();
    return facts->kind == platform::FileKind::File ? HashIfThere(file) : std::string{};
}

Status FlushTrees(const Folders& folders)
{
    for (const Path& place : {folders.program, folders.Backup(), folders.trle}) {
        const auto isThere = IsFolder(place);
        if (!isThere)
            return isThere.Error();
        if (!*isThere)
            continue;
        if (const auto failure = platform::SyncFileSystem(ResolvePath(place)))
            return MakeFailure(ErrorCode::CannotWrite, TextOf(place), failure);
    }
    return {};
}

Result<std::optional<ImportNote>> ReadImportUnderway(const Folders& folders)
{
    using Found = std::optional<ImportNote>;
    const auto text = ReadFileIfThere(ImportNotePath(folders), longestImportNote);
    if (!text)
        return text.Error();
    if (!*text)
        return Found{};
    auto note = ParseImportNote(**text);
    return note ? Result<Found>{std::move(*note)} : note.Error();
}

Status WriteImportUnderway(const Folders& folders, const ImportNote& note)
{
    std::vector<Path> ofBackup;
    for (const ImportPlace& place : note.places)
        if (const auto relative = SafeRelative(place.name);
            relative && place.tree == ImportTree::Backup)
            ofBackup.push_back(*relative);
    if (auto status = ForgetBackupFiles(folders, ofBackup); !status)
        return status;
    return WriteWorkNote(ImportNotePath(folders), FormatImportNote(note));
}

bool ImportWaits(const Folders& folders)
{
    return !IsFree(ImportNotePath(folders)).ValueOr(false);
}

Result<Path> SetImportNoteAside(const Folders& folders)
{
    return RenameAside(ImportNotePath(folders));
}

Status DropImportUnderway(const Folders& folders, const ImportNote& note)
{
    // An entry that is left without its note would be undone once more, and finds nothing to do.
    if (auto dropped = StatusOf(DropWorkNote(ImportNotePath(folders))); !dropped)
        return dropped;
    (void)FlushFolder(ImportNotePath(folders).parent_path());
    DropImport(folders, note.id);
    return {};
}

Path ImportContents(const Folders& folders, std::int32_t id)
{
    return InFolder(folders.program, OnDisk::DirImports) / NameOfImport(id);
}

std::uint64_t BytesOfImport(const Folders& folders, std::int32_t id)
{
    return static_cast<std::uint64_t>(FolderSize(ImportContents(folders, id)).ValueOr(0));
}

Status NoteToImportEntry(const Folders& folders, const ImportNote& note)
{
    const Path entry = EntryOfImport(folders, note.id);
    if (auto status = MakeFolders(entry.parent_path()); !status)
        return status;
    if (const auto failure = platform::Rename(ImportNotePath(folders), entry))
        return MakeFailure(ErrorCode::CannotWrite, TextOf(entry), failure);
    (void)FlushFolder(entry.parent_path());
    if (note.undoes > 0)
        DropImport(folders, note.undoes);
    return {};
}

Status EndUndoing(const Folders& folders, const ImportNote& note)
{
    ImportNote back = note;
    back.phase = ImportPhase::Done;
    back.id = note.next;
    back.undoes = note.id;
    back.next = 0;
    back.isUndone = !note.isUndone;
    for (ImportPlace& place : back.places)
        std::swap(place.was, place.came);
    auto written = WriteImportUnderway(folders, back);
    return written ? NoteToImportEntry(folders, back) : written;
}

void DropImport(const Folders& folders, std::int32_t id)
{
    // Its entry goes first, so that none is left without its contents.
    (void)platform::Unlink(EntryOfImport(folders, id));
    const Path contents = ImportContents(folders, id);
    if (const auto files = ListFiles(contents, OnDisk::PatAll))
        for (const Path& file : *files)
            if (IsContentHash(file.filename().native()))
                (void)platform::Unlink(file); // contents that nobody names do no harm
    ClearStagedLeftovers(contents);           // of a copy that was killed
    (void)platform::RemoveFolder(contents);
}

Result<std::vector<ImportNote>> ReadImports(const Folders& folders)
{
    auto entries = ReadEntries(folders);
    if (!entries)
        return entries.Error();
    std::erase_if(entries->all,
                  [&](const ImportNote& note) { return entries->used.contains(note.id); });
    return std::move(entries->all);
}

void BoundImports(const Folders& folders, const ProgramSettings& settings)
{
    const auto entries = ReadEntries(folders);
    if (!entries)
        return;
    std::int32_t count = 0;
    std::uint64_t bytes = 0;
    for (auto note = entries->all.rbegin(); note != entries->all.rend(); ++note) {
        const std::uint64_t own = BytesOfImport(folders, note->id);
        const bool fits = count < settings.undoCount && HasUndoRoom(settings, bytes + own);
        if (entries->used.contains(note->id) || (count > 0 && !fits)) {
            DropImport(folders, note->id);
            continue;
        }
        ++count;
        bytes += own;
    }
    ClearContentsWithoutEntry(folders);
}

} // namespace kestrova
