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

} // namespace

Result<std::vector<NotedFile>> NotedBackupFiles(const Folders& folders)
{
    const auto text = ReadFileIfThere(SumsFile(folders), longestBackupNote);
    if (!text)
        return text.Error();
    auto note = *text ? ParseBackupNote(**text) : Result<BackupNote>{BackupNote{}};
    if (!note)
        return std::vector<NotedFile>{}; // a damaged one says nothing
    const auto isIt = HasMark(folders.Backup(), note->backup);
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
