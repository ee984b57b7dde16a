#include "platform/steady_folders.h"

#include "platform/real_path.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <shared_mutex>
#include <string_view>
#include <sys/stat.h>

namespace kestrova::platform
{

namespace
{

struct SteadyFolder {
    Path path;
    dev_t device;
    ino_t inode;

    [[nodiscard]] bool IsStill() const
    {
        struct stat facts {
        };
        return ::stat(path.c_str(), &facts) == 0 && facts.st_dev == device && facts.st_ino == inode;
    }
};

std::atomic<std::size_t> steadyCount{0};
std::shared_mutex steadyGuard; // of `steadyOnes`
std::vector<SteadyFolder> steadyOnes;

bool IsNoted(const Path& path)
{
    return std::any_of(steadyOnes.begin(), steadyOnes.end(),
                       [&](const SteadyFolder& folder) { return folder.path == path; });
}

bool LiesBelow(std::string_view path, std::string_view folder)
{
    return path.size() > folder.size() + 1 && path[folder.size()] == '/' &&
           path.starts_with(folder);
}

/// One folder has several names where its path leads through a link.
std::vector<Path> NamesOf(const Path& folder)
{
    std::vector<Path> names{folder.has_filename() ? folder : folder.parent_path()};
    Path real;
    if (!RealPath(folder, real) && real != names.front())
        names.push_back(real);
    return names;
}

} // namespace

SteadyFolders::SteadyFolders(const std::vector<Path>& folders, const std::vector<Path>& lost)
{
    const std::unique_lock lock{steadyGuard};
    for (const Path& folder : lost)
        Add(folder, true);
    for (const Path& folder : folders)
        Add(folder, false);
    steadyCount = steadyOnes.size();
}

void SteadyFolders::Add(const Path& folder, bool isLost)
{
    for (const Path& name : folder.empty() ? std::vector<Path>{} : NamesOf(folder)) {
        struct stat facts {
        };
        const bool isThere = ::stat(name.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode);
        if (IsNoted(name) || (!isThere && !isLost))
            continue;
        steadyOnes.push_back(isLost ? SteadyFolder{name, 0, 0}
                                    : SteadyFolder{name, facts.st_dev, facts.st_ino});
        added_.push_back(name);
    }
}

SteadyFolders::~SteadyFolders()
{
    const std::unique_lock lock{steadyGuard};
    std::erase_if(steadyOnes, [this](const SteadyFolder& folder) {
        return std::find(added_.begin(), added_.end(), folder.path) != added_.end();
    });
    steadyCount = steadyOnes.size();
}

std::error_code AskSteadyFolders(const Path& path)
{
    if (steadyCount == 0)
        return {};
    const std::shared_lock lock{steadyGuard};
    for (const SteadyFolder& folder : steadyOnes)
        if (LiesBelow(path.native(), folder.path.native()) && !folder.IsStill())
            return std::make_error_code(std::errc::no_such_device);
    return {};
}

} // namespace kestrova::platform
