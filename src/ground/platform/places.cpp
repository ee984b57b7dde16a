#include "platform/places.h"

#include "platform/file_content.h"
#include "platform/files.h"
#include "platform/process.h"
#include "platform/user_folders.h"

#include <condition_variable>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <mntent.h>
#include <mutex>
#include <optional>
#include <sys/wait.h>
#include <thread>

#ifndef KESTROVA_SHARE_FOLDER
#define KESTROVA_SHARE_FOLDER "/usr/share/kestrova"
#endif

namespace kestrova::platform
{

namespace fs = std::filesystem;

namespace
{

/// A desktop that has nothing to open a file with says so at once.
constexpr std::chrono::milliseconds refusalTime{1500};
/// One that is busy says so up to this much later. What ends then may be the viewer itself, whose
/// codes are its own: those of a refusal are file, tool and action (xdg-open(1), EXIT CODES).
constexpr std::chrono::seconds lateRefusalTime{60};
constexpr int firstRefusal = 2;
constexpr int lastRefusal = 4;

/// How a program that opens something ended, between the one who waits and who may wait no more.
struct OpenerEnd {
    std::mutex mutex;
    std::condition_variable ended;
    std::optional<int> code{};
    bool isAwaited = true;
};

void HearOfLateEnd(pid_t pid, OpenerEnd& end, const std::string& what, const LateRefusal& late)
{
    const auto start = std::chrono::steady_clock::now();
    int state = 0;
    const bool ended = ::waitpid(pid, &state, 0) == pid;
    const int code = ended && WIFEXITED(state) ? WEXITSTATUS(state) : 0;
    {
        const std::lock_guard lock{end.mutex};
        end.code = code;
        end.ended.notify_one();
        if (end.isAwaited)
            return;
    }
    if (late && code >= firstRefusal && code <= lastRefusal &&
        std::chrono::steady_clock::now() - start < lateRefusalTime)
        late(what);
}

} // namespace

fs::path ExecutableFolder()
{
    std::error_code failure;
    return fs::read_symlink("/proc/self/exe", failure).parent_path();
}

fs::path UserDataFolder()
{
    // The base directory rules ignore a relative value.
    if (const char* folder = std::getenv("XDG_DATA_HOME"); folder != nullptr && folder[0] == '/')
        return folder;
    // Never a folder that the next start of the system empties.
    const fs::path home = HomeFolder();
    return (home.empty() ? fs::path{"/"} : home) / ".local" / "share";
}

std::string Variable(const std::string& name)
{
    const char* value = std::getenv(name.c_str());
    return value != nullptr ? value : "";
}

fs::path CurrentFolder()
{
    std::error_code failure;
    fs::path folder = fs::current_path(failure);
    return failure ? fs::path{"/proc/self/cwd"} : folder;
}

fs::path AbsolutePath(const fs::path& path)
{
    return path.empty() || path.is_absolute() ? path : CurrentFolder() / path;
}

fs::path ResourceFolder()
{
    const fs::path beside = ExecutableFolder() / ".." / "share" / "kestrova";
    return FactsOf(beside).kind == FileKind::Folder ? beside : fs::path{KESTROVA_SHARE_FOLDER};
}

namespace
{

bool IsNetwork(std::string_view device, std::string_view kind)
{
    return device.starts_with("//") || device.find(":/") != std::string_view::npos ||
           kind.starts_with("nfs") || kind.starts_with("smb") || kind == "cifs" || kind == "9p" ||
           kind == "ceph" || kind == "fuse.sshfs" || kind == "davfs";
}

/// A stick, a card, a disc, or whatever hangs on a USB cable: it may be gone tomorrow. What lies on
/// other devices, as an encrypted disk does, is asked of those.
bool IsRemovable(const fs::path& device, const fs::path& devices, int depth = 0)
{
    constexpr int deepest = 8;
    std::error_code none;
    const fs::path real = fs::canonical(device, none);
    const fs::path node = fs::canonical(devices / (none ? device : real).filename(), none);
    if (none || depth > deepest)
        return false;
    for (const fs::path& part : node)
        if (part.native().starts_with("usb"))
            return true;
    for (const fs::path& place : {node, node.parent_path()}) { // a partition lies in its disk
        std::string word;
        if (!ReadAll(place / "removable", word) && word.starts_with('1'))
            return true;
    }
    for (fs::directory_iterator below(node / "slaves", none), end; !none && below != end;
         below.increment(none))
        if (IsRemovable(below->path().filename(), devices, depth + 1))
            return true;
    return false;
}

} // namespace

std::vector<MountedDrive> MountedDrives(const fs::path& mounts, const fs::path& devices)
{
    std::vector<MountedDrive> drives;
    FILE* table = ::setmntent(mounts.c_str(), "r");
    if (table == nullptr)
        return drives;
    mntent entry{};
    char buffer[4096];
    while (::getmntent_r(table, &entry, buffer, sizeof buffer) != nullptr) {
        const std::string_view device = entry.mnt_fsname;
        const std::string_view kind = entry.mnt_type;
        // What has no device behind it keeps no levels (proc, sysfs, cgroup …), but for these.
        if (!device.starts_with('/') && kind != "overlay" && kind != "zfs" && kind != "btrfs" &&
            !kind.starts_with("nfs") && kind != "cifs")
            continue;
        const bool known = [&] {
            for (const MountedDrive& drive : drives)
                if (drive.folder == entry.mnt_dir)
                    return true;
            return false;
        }();
        if (!known && FactsOf(entry.mnt_dir).kind == FileKind::Folder)
            drives.push_back(
                {entry.mnt_dir, std::string{kind}, ::hasmntopt(&entry, MNTOPT_RO) != nullptr,
                 !IsNetwork(device, kind) && !IsRemovable(device, devices), fs::path{device}});
    }
    ::endmntent(table);
    return drives;
}

namespace
{

/// The name that the system's table has for it. What does not answer any more is known by the
/// folder in which it lies.
fs::path NameInTable(const fs::path& folder)
{
    std::error_code failure;
    fs::path real = fs::canonical(folder, failure);
    if (!failure)
        return real;
    real = fs::canonical(folder.parent_path(), failure);
    return failure ? folder : real / folder.filename();
}

} // namespace

std::string KindMountedOn(const fs::path& folder, const fs::path& table)
{
    const fs::path name = NameInTable(folder);
    std::string kind;
    FILE* const mounts = ::setmntent(table.c_str(), "r");
    if (mounts == nullptr)
        return kind;
    mntent entry{};
    char buffer[4096];
    while (::getmntent_r(mounts, &entry, buffer, sizeof buffer) != nullptr)
        if (name == entry.mnt_dir) // the last one lies on top
            kind = entry.mnt_type;
    ::endmntent(mounts);
    return kind;
}

Desktop SessionDesktop()
{
    const auto has = [](const char* variable) {
        const char* value = std::getenv(variable);
        return value != nullptr && value[0] != '\0';
    };
    if (has("WAYLAND_DISPLAY"))
        return has("DISPLAY") ? Desktop::WaylandWithX : Desktop::Wayland;
    return has("DISPLAY") ? Desktop::X : Desktop::None;
}

std::error_code OpenWithDesktop(const std::string& fileOrAddress, const fs::path& folder,
                                LateRefusal late)
{
    std::int64_t pid = 0;
    if (const auto failure = StartDetached({{"xdg-open", fileOrAddress}, folder, {}}, pid))
        return failure;
    // What opens may be the viewer itself, and then it goes on for as long as the person likes.
    const auto end = std::make_shared<OpenerEnd>();
    std::thread{[pid, end, fileOrAddress, late = std::move(late)] {
        HearOfLateEnd(static_cast<pid_t>(pid), *end, fileOrAddress, late);
    }}.detach();
    std::unique_lock lock{end->mutex};
    const bool refused = end->ended.wait_for(lock, refusalTime, [&] {
        return end->code.has_value();
    }) && *end->code != 0;
    end->isAwaited = false;
    if (refused)
        return std::make_error_code(std::errc::not_supported);
    return {};
}

} // namespace kestrova::platform
