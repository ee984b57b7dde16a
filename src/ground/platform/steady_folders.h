#pragma once

#include <filesystem>
#include <system_error>
#include <vector>

namespace kestrova::platform
{

using Path = std::filesystem::path;

/// While one stands, its folders are taken to stay the very ones that they were when it began. A
/// disk that goes away leaves an empty mount point, or another folder, under the same name: what
/// was made there would be hidden, or in a stranger's way, once the disk is back. They may stand
/// within each other and count for all threads.
class SteadyFolders
{
public:
    /// A folder that is not there is passed over, and so is one that stands already. In those that
    /// are lost another one stands already.
    explicit SteadyFolders(const std::vector<Path>& folders, const std::vector<Path>& lost = {});
    ~SteadyFolders();
    SteadyFolders(const SteadyFolders&) = delete;
    SteadyFolders& operator=(const SteadyFolders&) = delete;

private:
    void Add(const Path& folder, bool isLost);

    std::vector<Path> added_;
};

/// `no_such_device` for what lies below such a folder while another one, or none, stands in its
/// place. The folders themselves may be made, renamed and removed.
std::error_code AskSteadyFolders(const Path& path);

} // namespace kestrova::platform
