#include "originals/backup_sums.h"

#include "core/look.h"
#include "core/parallel.h"
#include "core/staged_file.h"
#include "formats/backup_note.h"
#include "formats/program_folder.h"
#include "history/swap_journal_file.h"
#include "platform/file_content.h"

#include <algorithm>
#include <set>

namespace kestrova
{

namespace
{

Path SumsFile(const Folders& folders)
{
    return InFolder(folders.program, OnDisk::FragBackupContent);
}

/// Whether most of what is noted stands there under its name and with its size.
bool FitsMostly(const Path& backup, const std::vector<NotedFile>& files)
{
    const auto fitting = std::count_if(files.begin(), files.end(), [&](const NotedFile& file) {
        return FileSize(backup / file.name) == file.size;
    });
    return static_cast<std::size_t>(fitting) * 2 > files.size();
}

/// The note is of the folder that was the backup then. Where that one is not here, the program's
/// folder was copied or brought back, and the backup with it.
Result<bool> IsOfBackup(const Folders& folders, const BackupNote& note)
{
    const auto isIt = HasMark(folders.Backup(), note.backup);
    if (!isIt || *isIt)
        return isIt;
    const auto others = ListSubfolders(folders.program);
    if (!others)
        return others.Error();
    for (const Path& other : *others) {
        const auto isOther = HasMark(other, note.backup);
        if (!isOther)
            return isOther;
        if (*isOther)
            return false;
    }
    return FitsMostly(ResolvePath(folders.Backup()), note.files);
}

} // namespace

Result<std::vector<NotedFile>> NotedBackupFiles(const Folders& folders)
{
    const auto text = ReadFileIfThere(SumsFile(folders), longestBackupNote);
    if (!text)
        return text.Error();
    auto note = *text ? ParseBackupNote(**text) : Result<BackupNote>{BackupNote{}};
    if (!note)
        return std::vector<NotedFile>{}; // a damaged one says nothing
    const auto isIt = IsOfBackup(folders, *note);
    if (!isIt)
        return isIt.Error();
    return *isIt ? std::move(note->files) : std::vector<NotedFile>{};
}

Status NoteBackupFiles(const Folders& folders, std::vector<NotedFile> files)
{
    auto backup = MarkOf(folders.Backup());
    if (!backup)
        return backup.Error();
    const Path file = SumsFile(folders);
    if (auto status = MakeFolders(file.parent_path()); !status)
        return status;
    return WriteWholeFile(file, FormatBackupNote({std::move(*backup), std::move(files)}), false);
}

Result<std::vector<NotedFile>> HashedFilesIn(const Path& folder)
{
    const Path root = ResolvePath(folder);
    const auto tree = ScanTree(root);
    if (!tree)
        return tree.Error();
    std::vector<NotedFile> files(tree->files.size());
    const auto note = [&](std::size_t i) {
        const Path& file = tree->files[i];
        files[i] = {file.lexically_relative(root).native(), FileSize(file), {}};
        if (platform::HashOfFile(file, files[i].hash))
            files[i].hash.clear();
    };
    (void)RunOnAllCores(files.size(), note); // nothing stops it
    std::erase_if(files, [](const NotedFile& file) { return file.hash.empty(); });
    return files;
}

Status ForgetBackupFiles(const Folders& folders, const std::vector<Path>& relatives)
{
    auto noted = NotedBackupFiles(folders);
    if (!noted)
        return noted.Error();
    std::set<std::string> names;
    for (const Path& relative : relatives)
        names.insert(relative.native());
    const auto forgotten =
        std::erase_if(*noted, [&](const NotedFile& file) { return names.contains(file.name); });
    return forgotten == 0 ? Status{} : NoteBackupFiles(folders, std::move(*noted));
}

} // namespace kestrova
