#include "swap/backup_folders.h"

#include "catalogue/message.h"
#include "core/removal.h"
#include "core/staged_file.h"
#include "swap/note_json.h"
#include "swap/swap_notes.h"

#include <algorithm>

namespace kestrova
{

namespace
{

Path OldBackupFolder(const Session& session)
{
    return InFolder(session.programFolder, RowText(Msg::DirOldBackup));
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

Path NotePath(const Session& session)
{
    return InFolder(session.programFolder, RowText(Msg::FragBackupNote));
}

/// Backups that are not there any more are left out; a note that nobody can read knows none.
std::vector<NotedBackup> NotedBackups(const Session& session)
{
    std::vector<NotedBackup> backups;
    const auto text = ReadWholeFile(NotePath(session), UINT64_C(1) << 20);
    if (!text)
        return backups;
    const NoteJson json = NoteJson::parse(*text, nullptr, false);
    NoteReader reader{json};
    reader.List("backups", [&](NoteReader& entry, const NoteJson&) {
        NotedBackup backup;
        backup.name = entry.Text("name");
        backup.origin.path = entry.Text("path");
        backup.origin.device = entry.Number<std::uint64_t>("device");
        backup.origin.inode = entry.Number<std::uint64_t>("inode");
        backup.full = entry.Flag("full");
        if (entry.Good() && SafeName(backup.name) &&
            FolderExists(session.programFolder / backup.name))
            backups.push_back(std::move(backup));
    });
    return reader.Good() ? backups : std::vector<NotedBackup>{};
}

Status WriteNoted(const Session& session, const std::vector<NotedBackup>& backups)
{
    NoteJson list = NoteJson::array();
    for (const NotedBackup& backup : backups)
        list.push_back({{"name", Encoded(backup.name)},
                        {"path", Encoded(backup.origin.path)},
                        {"device", backup.origin.device},
                        {"inode", backup.origin.inode},
                        {"full", backup.full}});
    const std::string text = Written({{"backups", std::move(list)}});
    if (const auto old = ReadWholeFile(NotePath(session)); old && *old == text)
        return {};
    if (auto status = MakeFolders(NotePath(session).parent_path()); !status)
        return status;
    return WriteWholeFile(NotePath(session), text);
}

std::string CurrentName(const Session& session)
{
    return session.BackupFolder().filename().native();
}

bool IsOf(const NotedBackup& backup, const Session& session)
{
    return IsMarked(backup.origin, session.TrleFolder()) ||
           Path{backup.origin.path} == session.TrleFolder();
}

/// The backup under a free name, noted there before it moves.
Status SetAside(Session& session)
{
    std::vector<NotedBackup> backups = NotedBackups(session);
    const auto current =
        std::find_if(backups.begin(), backups.end(), [&](const NotedBackup& backup) {
            return backup.name == CurrentName(session);
        });
    NotedBackup aside;
    if (current != backups.end())
        aside = *current;
    Path place;
    for (int number = 1; place.empty() || FolderExists(place); ++number)
        place =
            InFolder(session.programFolder, GetMsg(Msg::FragAsideBackup, {std::to_string(number)}));
    aside.name = place.filename().native();
    // Entries of folders that are not there are passed over, so this one counts from the rename on.
    backups.push_back(std::move(aside));
    if (auto status = WriteNoted(session, backups); !status)
        return status;
    return Renamed(session.BackupFolder(), place);
}

} // namespace

std::optional<FolderMark> BackupOrigin(const Session& session)
{
    for (const NotedBackup& backup : NotedBackups(session))
        if (backup.name == CurrentName(session))
            return backup.origin;
    return {};
}

Status NoteBackupOrigin(Session& session, bool full)
{
    std::vector<NotedBackup> backups = NotedBackups(session);
    std::erase_if(backups,
                  [&](const NotedBackup& backup) { return backup.name == CurrentName(session); });
    FolderMark origin = MarkOf(session.TrleFolder());
    origin.path = session.TrleFolder().native();
    backups.insert(backups.begin(), {CurrentName(session), std::move(origin), full});
    return WriteNoted(session, backups);
}

Result<bool> BringBackupBack(Session& session)
{
    for (const NotedBackup& backup : NotedBackups(session)) {
        if (backup.name == CurrentName(session) || !IsOf(backup, session))
            continue;
        if (FolderExists(session.BackupFolder()))
            if (auto status = SetAside(session); !status)
                return status.Error();
        if (auto status = Renamed(session.programFolder / backup.name, session.BackupFolder());
            !status)
            return status.Error();
        if (auto status = FlushFolder(session.programFolder); !status)
            return status.Error();
        session.preferences.fullBackup = backup.full;
        if (auto status = NoteBackupOrigin(session, backup.full); !status)
            return status.Error();
        return true;
    }
    return false;
}

Path NewBackupFolder(const Session& session)
{
    return InFolder(session.programFolder, RowText(Msg::DirNewBackup));
}

Status ExchangeBackup(Session& session, bool full, bool keepAside)
{
    const Path backup = session.BackupFolder();
    const Path fresh = NewBackupFolder(session);
    const Path old = OldBackupFolder(session);
    if (const auto failure = platform::SyncFileSystem(fresh))
        return MakeFailure(ErrorCode::CannotWrite, TextOf(fresh), failure);
    if (keepAside && FolderExists(backup))
        if (auto status = SetAside(session); !status)
            return status;
    const bool replaces = FolderExists(backup);
    if (replaces)
        if (auto status = Renamed(backup, old); !status)
            return status;
    if (auto status = Renamed(fresh, backup); !status) {
        if (replaces)
            (void)Renamed(old, backup); // the next start tries again
        return status;
    }
    if (auto status = FlushFolder(session.programFolder); !status) {
        if (replaces && Renamed(backup, fresh))
            (void)Renamed(old, backup); // the next start tries again
        return status;
    }
    if (replaces)
        (void)ClearPlace(old);             // complete already; the next start clears what is left
    (void)NoteBackupOrigin(session, full); // unnoted, it is compared when a folder is chosen
    return {};
}

bool SettleBackupFolders(Session& session)
{
    const Path backup = session.BackupFolder();
    const Path old = OldBackupFolder(session);
    Status status;
    if (FolderExists(old))
        status = FolderExists(backup) ? ClearPlace(old) : Renamed(old, backup);
    if (status && FolderExists(NewBackupFolder(session)))
        status = ClearPlace(NewBackupFolder(session));
    if (!status && !FolderExists(backup)) {
        TellFailure(session, GetMsg(Msg::InterruptedFailed), status.Error());
        return false;
    }
    return true; // leftovers beside a whole backup do no harm and are cleared another time
}

bool BackupFoldersWait(const Session& session)
{
    return FolderExists(OldBackupFolder(session)) || FolderExists(NewBackupFolder(session));
}

} // namespace kestrova
