#include "drives/seen_lock.h"

#include "core/leftovers.h"
#include "core/staged_file.h"
#include "drives/file_names.h"
#include "platform/process.h"

#include <chrono>
#include <thread>

namespace kestrova
{

namespace
{

/// The names of processes in the folder that have not ended, this one's included.
std::vector<std::pair<Path, std::int64_t>> UsersIn(const Path& folder)
{
    std::vector<platform::FolderEntry> entries;
    (void)platform::ListFolder(folder, entries); // nobody where nothing is
    std::vector<std::pair<Path, std::int64_t>> users;
    for (const platform::FolderEntry& entry : entries)
        if (const auto owner = OwnerOfStaged(entry.name);
            owner && entry.kind == platform::FileKind::File)
            users.emplace_back(folder / entry.name, *owner);
    return users;
}

bool IsOther(std::int64_t process)
{
    return process != platform::OwnProcess() && platform::IsRunning(process);
}

} // namespace

Result<SeenLock> SeenLock::Take(const Path& programFolder, const Heartbeat& heartbeat)
{
    constexpr std::chrono::milliseconds slice{30};
    const Path file = InFolder(programFolder, OnDisk::FragDiscsLock);
    if (const auto made = MakeFolders(file.parent_path()); !made)
        return made.Error();
    SeenLock lock;
    std::string holder;
    for (;;) {
        const auto failure = platform::FileLock::Take(file, "", lock.lock_, holder);
        if (!failure)
            return lock;
        if (failure != std::errc::resource_unavailable_try_again)
            return MakeFailure(ErrorCode::CannotOpen, TextOf(file), failure);
        if (heartbeat && !heartbeat())
            return Failure{ErrorCode::Stopped, TextOf(file)};
        std::this_thread::sleep_for(slice);
    }
}

Status MarkUser(const Path& folder)
{
    for (const auto& [file, process] : UsersIn(folder))
        if (process == platform::OwnProcess())
            return {};
    platform::File file;
    const Path name = StagedNameFor(folder / "user");
    if (const auto failure = platform::File::CreateNew(name, file))
        return MakeFailure(ErrorCode::CannotWrite, TextOf(name), failure);
    return {};
}

bool UnmarkUser(const Path& folder)
{
    bool others = false;
    for (const auto& [file, process] : UsersIn(folder))
        if (IsOther(process))
            others = true;
        else
            (void)platform::Unlink(file); // a name of nobody holds up nothing
    return others;
}

bool OthersUse(const Path& folder)
{
    for (const auto& [file, process] : UsersIn(folder))
        if (IsOther(process))
            return true;
    return false;
}

} // namespace kestrova
