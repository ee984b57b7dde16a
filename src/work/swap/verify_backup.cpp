#include "swap/verify_backup.h"

#include "core/look.h"
#include "core/parallel.h"
#include "core/text.h"
#include "originals/backup_sums.h"
#include "platform/file_content.h"
#include "swap/backup_state.h"
#include "words/check.h"

#include <map>

namespace kestrova
{

namespace
{

LevelFault BackupFault(FileFault kind, const NotedFile& noted, std::string reason = {})
{
    return {kind, Readable(ToBackslashes(noted.name)).substr(1), noted.name,
            StoredEntry{noted.name, noted.size, 0, noted.hash, {}}, std::move(reason)};
}

LevelFault ContentFault(const NotedFile& noted, const NotedFile& now)
{
    return BackupFault(now.size < noted.size ? FileFault::Cut : FileFault::Differs, noted);
}

/// A file of the backup as it is now.
struct BackupFile {
    NotedFile now;
    std::error_code failure;
};

Result<std::vector<BackupFile>> ReadBackup(const Path& backup, const Heartbeat& beat)
{
    const auto tree = ScanTree(backup, beat);
    if (!tree)
        return tree.Error();
    std::vector<BackupFile> files(tree->files.size());
    const auto read = [&](std::size_t i) {
        const Path& file = tree->files[i];
        files[i].now = {file.lexically_relative(backup).native(), FileSize(file), {}};
        files[i].failure = platform::HashOfFile(file, files[i].now.hash);
    };
    if (!RunOnAllCores(files.size(), read, beat))
        return MakeFailure(ErrorCode::Stopped, TextOf(backup));
    return files;
}

} // namespace

Result<CheckedLevel> VerifyBackup(const Folders& folders, Noting noting, const Heartbeat& beat)
{
    if (BackupIsAway(folders))
        return InWords(ErrorCode::Missing, GetMsg(Msg::VerifyNoBackup, {TextOf(folders.Backup())}));
    auto noted = NotedBackupFiles(folders);
    const auto files = ReadBackup(ResolvePath(folders.Backup()), beat);
    if (!noted || !files)
        return noted ? files.Error() : noted.Error();
    std::map<std::string, const NotedFile*> missing;
    for (const NotedFile& file : *noted)
        missing.emplace(file.name, &file);
    CheckedLevel checked;
    checked.files = files->size();
    std::vector<NotedFile> fresh;
    for (const BackupFile& file : *files) {
        const auto known = missing.find(file.now.name);
        if (known == missing.end()) {
            if (!file.failure)
                fresh.push_back(file.now);
            continue;
        }
        if (file.failure)
            checked.faults.push_back(
                BackupFault(FileFault::Unreadable, *known->second, file.failure.message()));
        else if (file.now.hash != known->second->hash)
            checked.faults.push_back(ContentFault(*known->second, file.now));
        missing.erase(known);
    }
    for (const auto& [name, file] : missing)
        checked.faults.push_back(BackupFault(FileFault::Missing, *file));
    if (noting == Noting::Yes && !fresh.empty()) {
        noted->insert(noted->end(), fresh.begin(), fresh.end());
        checked.isNotedNow = bool{NoteBackupFiles(folders, std::move(*noted))};
    }
    return checked;
}

} // namespace kestrova
