#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <system_error>
#include <vector>

/// Where things are on this machine, and how it opens them.
namespace kestrova::platform
{

/// The folder of the running executable.
std::filesystem::path ExecutableFolder();
/// `$XDG_DATA_HOME`, or the place that stands for it.
std::filesystem::path UserDataFolder();
/// What a variable of this process's surroundings says; empty when there is none.
std::string Variable(const std::string& name);
/// The folder that relative paths count from. One that was deleted in the meantime stands as a path
/// below which nothing is found and nothing can be made.
std::filesystem::path CurrentFolder();
/// The path from the root on; an empty one stays empty. Fails for no path.
std::filesystem::path AbsolutePath(const std::filesystem::path& path);
/// The installed share folder of the program, or the one of the source tree it was built from.
std::filesystem::path ResourceFolder();

struct MountedDrive {
    std::filesystem::path folder; ///< where it is mounted
    std::string kind;             ///< file system type
    bool readOnly = false;
    bool fixed = true;            ///< neither removable nor on a network
    std::filesystem::path device; ///< what is mounted there
};
/// Real disks only: one row a mount point, in the order of the system. `table` and `devices` are
/// where the system tells of its mounts and of what its disks are.
std::vector<MountedDrive> MountedDrives(const std::filesystem::path& table = "/proc/self/mounts",
                                        const std::filesystem::path& devices = "/sys/class/block");

/// The kind of what is mounted on exactly that folder, by whatever name it is called, also of what
/// does not answer any more; empty when nothing is.
std::string KindMountedOn(const std::filesystem::path& folder,
                          const std::filesystem::path& table = "/proc/self/mounts");

/// What the session that this process belongs to can show windows on.
enum class Desktop { None, X, Wayland, WaylandWithX };
Desktop SessionDesktop();

/// Is told what the desktop refused to open when it says so late; called by another thread.
using LateRefusal = std::function<void(const std::string& fileOrAddress)>;
/// Hands a file or an address to the desktop (`xdg-open`). `not_supported`: within a second the
/// desktop said that it has nothing to open it with. Nobody has to wait for what opens.
std::error_code OpenWithDesktop(const std::string& fileOrAddress,
                                const std::filesystem::path& folder, LateRefusal late = {});

} // namespace kestrova::platform
