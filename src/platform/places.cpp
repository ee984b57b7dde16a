#include "platform/places.h"

#include "platform/files.h"
#include "platform/process.h"

#include <cstdlib>
#include <cstring>
#include <mntent.h>

#ifndef KESTROVA_SHARE_FOLDER
#define KESTROVA_SHARE_FOLDER "/usr/share/kestrova"
#endif

namespace kestrova::platform
{

namespace fs = std::filesystem;

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
    const char* home = std::getenv("HOME");
    return fs::path{home != nullptr && home[0] == '/' ? home : "/tmp"} / ".local" / "share";
}

fs::path ResourceFolder()
{
    const fs::path beside = ExecutableFolder() / ".." / "share" / "kestrova";
    return FactsOf(beside).kind == FileKind::Folder ? beside : fs::path{KESTROVA_SHARE_FOLDER};
}

std::vector<MountedDrive> MountedDrives()
{
    std::vector<MountedDrive> drives;
    FILE* table = ::setmntent("/proc/self/mounts", "r");
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
                {entry.mnt_dir, std::string{kind}, ::hasmntopt(&entry, MNTOPT_RO) != nullptr});
    }
    ::endmntent(table);
    return drives;
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

std::error_code OpenWithDesktop(const std::string& fileOrAddress, const fs::path& folder)
{
    std::int64_t pid = 0;
    return StartDetached({{"xdg-open", fileOrAddress}, folder, {}}, pid);
}

} // namespace kestrova::platform
