#include "swap/verify_backup.h"

#include "core/look.h"
#include "core/parallel.h"
#include "core/text.h"
#include "originals/backup_sums.h"
#include "originals/trle_tree.h"
#include "platform/file_content.h"
#include "swap/backup_state.h"
#include "words/check.h"

#include <algorithm>
#include <map>

namespace kestrova
{

namespace
{

/// `stands`: how the file is spelled in the backup, or was, where it is missing.
LevelFault BackupFault(FileFault kind, const NotedFile& noted, const std::string& stands,
                       std::string reason = {})
{
    return {kind, Readable(ToBackslashes(noted.name)).substr(1), stands,
            StoredEntry{noted.name, noted.size, 0, noted.hash, {}}, std::move(reason)};
}

/// A file of the backup as it is now.
struct BackupFile {
    NotedFile now;
    std::error_code failure;
    const NotedFile* noted = nullptr;
};

/// What was noted, each until a file is found for it.
class NotedNames
{
public:
    explicit NotedNames(const std::vector<NotedFile>& noted)
    {
        for (const NotedFile& file : noted)
            left_.emplace(file.name, &file);
    }
    const NotedFile* Take(const std::string& name)
    {
        const auto found = left_.extract(name);
        return found ? found.mapped() : nullptr;
    }
    /// The game makes no difference, and a copy by another system may spell them so.
    const NotedFile* TakeInOtherCapitals(const std::string& name)
    {
        const auto same = std::find_if(left_.begin(), left_.end(), [&](const auto& each) {
            return EqualNames(each.first, name);
        });
        return same == left_.end() ? nullptr : Take(std::string{same->first});
    }
    [[nodiscard]] std::vector<const NotedFile*> Left() const
    {
        std::vector<const NotedFile*> left;
        for (const auto& [name, file] : left_)
            left.push_back(file);
        return left;
    }

private:
    std::map<std::string, const NotedFile*> left_;
};

std::optional<LevelFault> BackupFaultOf(const BackupFile& file)
{
    const NotedFile* const noted = file.noted;
    if (noted == nullptr || (!file.failure && file.now.hash == noted->hash))
        return {};
    if (file.failure)
        return BackupFault(FileFault::Unreadable, *noted, file.now.name, file.failure.message());
    return BackupFault(file.now.size < noted->size ? FileFault::Cut : FileFault::Differs, *noted,
                       file.now.name);
}

Result<std::vector<BackupFile>> ReadBackup(const Path& backup, const Heartbeat& beat)
{
    // As a restore reads it; what lies behind a link that leads nowhere is missing.
    const auto tree = ScanThroughLinks(backup, beat, UnseenParts::AreListed);
    if (!tree)
        return tree.Error();
    std::vector<BackupFile> files(tree->files.size());
    const auto read = [&](std::size_t i) {
        const Path file = backup / tree->files[i];
        files[i].now = {tree->files[i].native(), FileSize(file), {}};
        files[i].failure = platform::HashOfFile(file, files[i].now.hash);
    };
    if (!RunOnAllCores(files.size(), read, beat))
        return MakeFailure(ErrorCode::Stopped, TextOf(backup));
    return files;
}

/// What no listing has. A folder or a link that leads nowhere may have its name.
FileFault WhyUnlisted(const Path& file)
{
    const auto kind = platform::FactsOfLink(file).kind;
    return kind == platform::FileKind::Missing ? FileFault::Missing : FileFault::InTheWay;
}

} // namespace

Result<CheckedLevel> VerifyBackup(const Folders& folders, Noting noting, const Heartbeat& beat)
{
    if (BackupIsAway(folders))
        return InWords(ErrorCode::Missing, GetMsg(Msg::VerifyNoBackup, {TextOf(folders.Backup())}));
    auto noted = NotedBackupFiles(folders);
    const Path backup = ResolvePath(folders.Backup());
    auto files = ReadBackup(backup, beat);
    if (!noted || !files)
        return noted ? files.Error() : noted.Error();
    NotedNames names{*noted};
    for (BackupFile& file : *files)
        file.noted = names.Take(file.now.name);
    CheckedLevel checked;
    checked.files = files->size();
    std::vector<NotedFile> fresh;
    for (BackupFile& file : *files) {
        if (file.noted == nullptr)
            file.noted = names.TakeInOtherCapitals(file.now.name);
        if (auto fault = BackupFaultOf(file))
            checked.faults.push_back(std::move(*fault));
        else if (file.noted == nullptr && !file.failure)
            fresh.push_back(file.now);
    }
    for (const NotedFile* file : names.Left())
        checked.faults.push_back(BackupFault(WhyUnlisted(backup / file->name), *file, file->name));
    if (noting == Noting::Yes && !fresh.empty()) {
        noted->insert(noted->end(), fresh.begin(), fresh.end());
        checked.isNotedNow = bool{NoteBackupFiles(folders, std::move(*noted))};
    }
    return checked;
}

} // namespace kestrova
