#include "platform/files.h"

#include "platform/clock.h"
#include "platform/file_hook.h"
#include "platform/folder_memory.h"
#include "platform/last_error.h"
#include "platform/steady_folders.h"

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace kestrova::platform
{

namespace
{

/// Errors that say the same at any time: nothing can stand under such a name.
bool SaysMissing(int error)
{
    return error == ENOENT || error == ENOTDIR || error == ELOOP || error == ENAMETOOLONG;
}

using StatusCall = int (*)(const char*, struct stat*);

std::error_code LookWith(StatusCall call, const Path& path, FileFacts& facts)
{
    facts = {};
    if (const auto failure = AskFileHook(FileAction::Look, path))
        return failure;
    struct stat status {
    };
    if (call(path.c_str(), &status) == 0)
        facts = FactsFrom(status);
    else if (!SaysMissing(errno))
        return LastError();
    return {};
}

/// Of an entry that a listing gave; some disks do not tell its kind there.
std::error_code KindOfEntry(const Path& folder, const dirent& entry, FileKind& kind)
{
    FileFacts facts;
    std::error_code failure;
    switch (entry.d_type) {
    case DT_REG:
        kind = FileKind::File;
        break;
    case DT_DIR:
        kind = FileKind::Folder;
        break;
    case DT_LNK:
        kind = FileKind::Link;
        break;
    case DT_UNKNOWN:
        failure = LookAtLink(folder / entry.d_name, facts);
        kind = facts.kind;
        break;
    default:
        kind = FileKind::Other;
    }
    return failure;
}

} // namespace

std::error_code Look(const Path& path, FileFacts& facts)
{
    return LookWith(::stat, path, facts);
}

std::error_code LookAtLink(const Path& path, FileFacts& facts)
{
    return LookWith(::lstat, path, facts);
}

FileFacts FactsOf(const Path& path)
{
    FileFacts facts;
    (void)Look(path, facts); // for what is only shown; see platform/look.h
    return facts;
}

FileFacts FactsOfLink(const Path& path)
{
    FileFacts facts;
    (void)LookAtLink(path, facts); // as above
    return facts;
}

std::error_code ListFolder(const Path& folder, std::vector<FolderEntry>& entries)
{
    entries.clear();
    if (const auto failure = AskFileHook(FileAction::List, folder))
        return failure;
    DIR* listing = ::opendir(folder.c_str());
    if (listing == nullptr)
        return LastError();
    std::error_code failure;
    errno = 0;
    while (const dirent* entry = failure ? nullptr : ::readdir(listing)) {
        FolderEntry found{entry->d_name, FileKind::Missing};
        if (found.name != "." && found.name != "..") {
            failure = KindOfEntry(folder, *entry, found.kind);
            entries.push_back(std::move(found));
        }
        errno = 0;
    }
    if (!failure && errno != 0)
        failure = LastError();
    ::closedir(listing);
    return failure;
}

std::error_code MakeFolder(const Path& folder)
{
    if (const auto failure = AskFileHook(FileAction::MakeFolder, folder))
        return failure;
    if (::mkdir(folder.c_str(), 0777) != 0)
        return LastError();
    NoteName(folder, true);
    return {};
}

std::error_code MakeFolders(const Path& folder)
{
    const FileKind kind = FactsOf(folder).kind;
    if (kind == FileKind::Folder)
        return {};
    if (kind != FileKind::Missing)
        return std::make_error_code(std::errc::not_a_directory);
    if (const auto failure = AskSteadyFolders(folder)) // before the folders above are made anew
        return failure;
    if (folder.has_parent_path() && folder.parent_path() != folder)
        if (const auto failure = MakeFolders(folder.parent_path()))
            return failure;
    const auto failure = MakeFolder(folder);
    return failure == std::errc::file_exists ? std::error_code{} : failure;
}

std::error_code RemoveFolder(const Path& folder)
{
    if (const auto failure = AskFileHook(FileAction::RemoveFolder, folder))
        return failure;
    if (::rmdir(folder.c_str()) != 0)
        return LastError();
    NoteName(folder, false);
    return {};
}

std::error_code Unlink(const Path& file)
{
    if (const auto failure = AskFileHook(FileAction::Unlink, file))
        return failure;
    if (::unlink(file.c_str()) != 0)
        return LastError();
    NoteName(file, false);
    return {};
}

std::error_code Rename(const Path& from, const Path& to)
{
    if (const auto failure = AskFileHook(FileAction::Rename, to))
        return failure;
    if (::rename(from.c_str(), to.c_str()) != 0)
        return LastError();
    NoteName(from, false);
    NoteName(to, true);
    return {};
}

std::error_code HardLink(const Path& file, const Path& name)
{
    if (const auto failure = AskFileHook(FileAction::Create, name))
        return failure;
    if (::link(file.c_str(), name.c_str()) != 0)
        return LastError();
    NoteName(name, true);
    return {};
}

std::error_code MakeLink(const Path& target, const Path& name)
{
    if (const auto failure = AskFileHook(FileAction::Create, name))
        return failure;
    if (::symlink(target.c_str(), name.c_str()) != 0)
        return LastError();
    NoteName(name, true);
    return {};
}

std::error_code Exchange(const Path& a, const Path& b)
{
    if (const auto failure = AskFileHook(FileAction::Exchange, b))
        return failure;
    if (::renameat2(AT_FDCWD, a.c_str(), AT_FDCWD, b.c_str(), RENAME_EXCHANGE) == 0)
        return {};
    const std::error_code failure = LastError();
    return failure == std::errc::invalid_argument
               ? std::make_error_code(std::errc::operation_not_supported)
               : failure;
}

std::error_code SetMode(const Path& path, std::uint32_t mode)
{
    if (const auto failure = AskFileHook(FileAction::SetMode, path))
        return failure;
    return ::chmod(path.c_str(), mode) == 0 ? std::error_code{} : LastError();
}

std::error_code SetModified(const Path& path, std::int64_t modifiedNs)
{
    if (const auto failure = AskFileHook(FileAction::SetTimes, path))
        return failure;
    timespec times[2];
    times[0].tv_sec = 0;
    times[0].tv_nsec = UTIME_OMIT;
    times[1].tv_sec = static_cast<time_t>(modifiedNs / nsOfSecond);
    times[1].tv_nsec = static_cast<long>(modifiedNs % nsOfSecond);
    if (times[1].tv_nsec < 0) {
        times[1].tv_nsec += nsOfSecond;
        --times[1].tv_sec;
    }
    return ::utimensat(AT_FDCWD, path.c_str(), times, 0) == 0 ? std::error_code{} : LastError();
}

std::error_code SyncFolder(const Path& folder)
{
    if (const auto failure = AskFileHook(FileAction::Sync, folder))
        return failure;
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return LastError();
    // Some network file systems refuse to flush a folder; their names need no flush.
    const std::error_code failure =
        ::fsync(descriptor) == 0 || errno == EINVAL ? std::error_code{} : LastError();
    ::close(descriptor);
    return failure;
}

std::error_code SyncFileSystem(const Path& path)
{
    if (const auto failure = AskFileHook(FileAction::Sync, path))
        return failure;
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0)
        return LastError();
    const std::error_code failure = ::syncfs(descriptor) == 0 ? std::error_code{} : LastError();
    ::close(descriptor);
    return failure;
}

std::error_code FreeSpace(const Path& path, std::uint64_t& bytes)
{
    struct statvfs facts {
    };
    if (::statvfs(path.c_str(), &facts) != 0)
        return LastError();
    bytes = std::uint64_t{facts.f_bavail} * std::uint64_t{facts.f_frsize};
    return {};
}

bool IsWritableFolder(const Path& folder)
{
    return FactsOf(folder).kind == FileKind::Folder && ::access(folder.c_str(), W_OK) == 0;
}

} // namespace kestrova::platform
