#include "originals/backup_folders.h"

#include "core/copying.h"
#include "core/look.h"
#include "core/removal.h"
#include "core/staged_file.h"
#include "formats/program_folder.h"
#include "formats/record_json.h"
#include "history/swap_journal_file.h"
#include "originals/backup_sums.h"
#include "words/originals.h"

#include <algorithm>
#include <future>

namespace kestrova
{

namespace
{

Path OldBackupFolder(const Folders& folders)
{
    return InFolder(folders.program, OnDisk::DirOldBackup);
}

Status Renamed(const Path& from, const Path& to)
{
    if (const auto failure = platform::Rename(from, to))
        return MakeFailure(ErrorCode::CannotWrite, TextOf(to), failure);
    return {};
}

/// One backup and the folder that it was made of.
struct NotedBackup {
    std::string name; ///< of its folder in the program's folder
    FolderMark origin;
    bool full = false;
};

Path ChoiceNotePath(const Folders& folders)
{
    return InFolder(folders.program, OnDisk::FragBackupNote);
}

/// Backups that are not there any more are left out; a damaged note knows none.
Result<std::vector<NotedBackup>> NotedBackups(const Folders& folders)
{
    std::vector<NotedBackup> backups;
    const auto text = ReadFileIfThere(ChoiceNotePath(folders), UINT64_C(1) << 20);
    if (!text)
        return text.Error();
    if (!*text)
        return backups;
    std::optional<Failure> unknown;
    const NoteJson json = ParseNote(**text);
    NoteReader reader{json};
    reader.List("backups", [&](NoteReader& entry, const NoteJson&) {
        NotedBackup backup;
        backup.name = entry.Text("name");
        backup.origin.path = entry.Text("path");
        backup.origin.device = entry.Number<std::uint64_t>("device");
        backup.origin.inode = entry.Number<std::uint64_t>("inode");
        backup.full = entry.Flag("full");
        if (!entry.Good() || !SafeName(backup.name))
            return;
        const auto isThere = IsFolder(folders.program / backup.name);
        if (!isThere)
            unknown = isThere.Error();
        else if (*isThere)
            backups.push_back(std::move(backup));
    });
    if (unknown)
        return *unknown;
    return reader.Good() ? backups : std::vector<NotedBackup>{};
}

Status WriteNoted(const Folders& folders, const std::vector<NotedBackup>& backups)
{
    NoteJson list = NoteJson::array();
    for (const NotedBackup& backup : backups)
        list.push_back({{"name", Encoded(backup.name)},
                        {"path", Encoded(backup.origin.path)},
                        {"device", backup.origin.device},
                        {"inode", backup.origin.inode},
                        {"full", backup.full}});
    const std::string text = Written({{"backups", std::move(list)}});
    if (const auto old = ReadWholeFile(ChoiceNotePath(folders)); old && *old == text)
        return {};
    if (auto status = MakeFolders(ChoiceNotePath(folders).parent_path()); !status)
        return status;
    return WriteWholeFile(ChoiceNotePath(folders), text);
}

std::string CurrentName(const Folders& folders)
{
    return folders.Backup().filename().native();
}

Result<bool> IsOf(const NotedBackup& backup, const Path& trle)
{
    if (Path{backup.origin.path} == trle)
        return true;
    return HasMark(trle, backup.origin);
}

Result<Path> FreeAside(const Folders& folders)
{
    return FirstFree([&](int number) {
        return InFolder(folders.program, Filled(OnDisk::FragAsideBackup, {std::to_string(number)}));
    });
}

/// The backup under a free name, noted there before it moves.
Status SetAside(const Folders& folders)
{
    auto backups = NotedBackups(folders);
    if (!backups)
        return backups.Error();
    const auto current =
        std::find_if(backups->begin(), backups->end(), [&](const NotedBackup& backup) {
            return backup.name == CurrentName(folders);
        });
    NotedBackup aside;
    if (current != backups->end())
        aside = *current;
    const auto place = FreeAside(folders);
    if (!place)
        return place.Error();
    aside.name = place->filename().native();
    // Entries of folders that are not there are passed over, so this one counts from the rename on.
    backups->push_back(std::move(aside));
    if (auto status = WriteNoted(folders, *backups); !status)
        return status;
    return Renamed(folders.Backup(), *place);
}

} // namespace

Result<std::optional<FolderMark>> BackupOrigin(const Folders& folders)
{
    const auto backups = NotedBackups(folders);
    if (!backups)
        return backups.Error();
    for (const NotedBackup& backup : *backups)
        if (backup.name == CurrentName(folders))
            return std::optional{backup.origin};
    return std::optional<FolderMark>{};
}

Status NoteBackupOrigin(const Folders& folders, bool full)
{
    auto backups = NotedBackups(folders);
    if (!backups)
        return backups.Error();
    std::erase_if(*backups,
                  [&](const NotedBackup& backup) { return backup.name == CurrentName(folders); });
    auto origin = MarkOf(folders.trle);
    if (!origin)
        return origin.Error();
    backups->insert(backups->begin(), {CurrentName(folders), std::move(*origin), full});
    return WriteNoted(folders, *backups);
}

Result<bool> BringBackupBack(const Folders& folders, PreferencesRecord& preferences)
{
    const auto backups = NotedBackups(folders);
    if (!backups)
        return backups.Error();
    for (const NotedBackup& backup : *backups) {
        const auto isThis = IsOf(backup, folders.trle);
        if (!isThis)
            return isThis;
        if (backup.name == CurrentName(folders) || !*isThis)
            continue;
        const auto hasOther = IsFolder(folders.Backup());
        if (!hasOther)
            return hasOther;
        if (*hasOther)
            if (auto status = SetAside(folders); !status)
                return status.Error();
        if (auto status = Renamed(folders.program / backup.name, folders.Backup()); !status)
            return status.Error();
        if (auto status = FlushFolder(folders.program); !status)
            return status.Error();
        preferences.fullBackup = backup.full;
        if (auto status = NoteBackupOrigin(folders, backup.full); !status)
            return status.Error();
        return true;
    }
    return false;
}

Path NewBackupFolder(const Folders& folders)
{
    return InFolder(folders.program, OnDisk::DirNewBackup);
}

Status ExchangeBackup(const Folders& folders, bool full, bool keepAside)
{
    const Path backup = folders.Backup();
    const Path fresh = NewBackupFolder(folders);
    const Path old = OldBackupFolder(folders);
    // While the disk writes, the processors have nothing else to do.
    auto reading = std::async(std::launch::async, [&] { return HashedFilesIn(fresh); });
    const auto unwritten = platform::SyncFileSystem(fresh);
    auto content = reading.get();
    if (unwritten)
        return MakeFailure(ErrorCode::CannotWrite, TextOf(fresh), unwritten);
    const auto hasOld = IsFolder(backup);
    if (!hasOld)
        return hasOld.Error();
    if (keepAside && *hasOld)
        if (auto status = SetAside(folders); !status)
            return status;
    const bool replaces = *hasOld && !keepAside;
    if (replaces)
        if (auto status = Renamed(backup, old); !status)
            return status;
    if (auto status = Renamed(fresh, backup); !status) {
        if (replaces)
            (void)Renamed(old, backup); // the next start tries again
        return status;
    }
    if (auto status = FlushFolder(folders.program); !status) {
        if (replaces && Renamed(backup, fresh))
            (void)Renamed(old, backup); // the next start tries again
        return status;
    }
    if (replaces)
        (void)ClearPlace(old); // complete already; the next start clears what is left
    (void)NoteBackupOrigin(folders,
                           full); // unnoted, it is compared when a folder is chosen
    if (content)
        (void)NoteBackupFiles(folders, std::move(*content)); // unnoted, the next check notes it
    return {};
}

Status SettleBackupFolders(const Folders& folders)
{
    const Path backup = folders.Backup();
    const Path old = OldBackupFolder(folders);
    Status status;
    const auto hasOld = IsFolder(old);
    const auto hasBackup = IsFolder(backup);
    if (!hasOld || !hasBackup)
        status = hasOld ? hasBackup.Error() : hasOld.Error();
    else if (*hasOld)
        status = *hasBackup ? ClearPlace(old) : Renamed(old, backup);
    if (status && FolderExists(NewBackupFolder(folders)))
        status = ClearPlace(NewBackupFolder(folders));
    if (!status && !FolderExists(backup))
        return Saying(GetMsg(Msg::InterruptedFailed), status);
    return {}; // leftovers beside a whole backup do no harm and are cleared another time
}

bool BackupFoldersWait(const Folders& folders)
{
    return FolderExists(OldBackupFolder(folders)) || FolderExists(NewBackupFolder(folders));
}

} // namespace kestrova
