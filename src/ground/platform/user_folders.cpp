#include "platform/user_folders.h"

#include <array>
#include <cstdlib>
#include <pwd.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace kestrova::platform
{

namespace fs = std::filesystem;

namespace
{

fs::path FolderOfVariable(const char* name)
{
    const char* value = std::getenv(name);
    return value != nullptr && value[0] == '/' ? fs::path{value} : fs::path{};
}

} // namespace

std::uint64_t UserNumber()
{
    return ::getuid();
}

fs::path HomeFolder()
{
    if (fs::path named = FolderOfVariable("HOME"); !named.empty())
        return named;
    // Services and scheduled jobs may run without the variable; the system knows the folder.
    std::array<char, 4096> text{};
    passwd entry{};
    passwd* found = nullptr;
    const bool known =
        ::getpwuid_r(::getuid(), &entry, text.data(), text.size(), &found) == 0 && found != nullptr;
    return known && found->pw_dir[0] == '/' ? fs::path{found->pw_dir} : fs::path{};
}

fs::path UserCacheFolder()
{
    const fs::path named = FolderOfVariable("XDG_CACHE_HOME");
    const fs::path home = HomeFolder();
    return !named.empty() || home.empty() ? named : home / ".cache";
}

fs::path NamedWinePrefix()
{
    return FolderOfVariable("WINEPREFIX");
}

fs::path RuntimeFolder()
{
    const fs::path folder = FolderOfVariable("XDG_RUNTIME_DIR");
    struct stat there {
    };
    const bool isOwn = !folder.empty() && ::stat(folder.c_str(), &there) == 0 &&
                       S_ISDIR(there.st_mode) && there.st_uid == ::geteuid() &&
                       (there.st_mode & (S_IRWXG | S_IRWXO)) == 0;
    return isOwn ? folder : fs::path{};
}

std::vector<fs::path> SharedDataFolders()
{
    const char* value = std::getenv("XDG_DATA_DIRS");
    std::string_view rest =
        value != nullptr && value[0] != '\0' ? value : "/usr/local/share:/usr/share";
    std::vector<fs::path> folders;
    while (!rest.empty()) {
        const std::string_view one = rest.substr(0, rest.find(':'));
        rest.remove_prefix(std::min(rest.size(), one.size() + 1));
        if (one.starts_with('/'))
            folders.emplace_back(one);
    }
    return folders;
}

} // namespace kestrova::platform
