#include "editor/wine_prefixes.h"

#include "core/files.h"
#include "core/look.h"
#include "core/text.h"
#include "editor/file_names.h"
#include "platform/places.h"
#include "platform/real_path.h"
#include "platform/user_folders.h"
#include "tools/program_launch.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// What lies beside the prefixes of other programs is looked at up to this number.
constexpr std::size_t mostInOneFolder = 200;

bool IsPrefix(const Path& folder)
{
    return !folder.empty() && FileExists(folder / OnDisk::SystemRegistry) &&
           FolderExists(folder / OnDisk::WineDriveC);
}

Path DriveFolder(const Path& prefix, char letter)
{
    const Path named = prefix / OnDisk::WineDrives / (std::string{letter} + ':');
    Path real;
    if (!platform::RealPath(named, real))
        return real;
    if (letter == 'c')
        return prefix / OnDisk::WineDriveC;
    return letter == 'z' ? Path{"/"} : Path{};
}

} // namespace

std::vector<Path> KnownPrefixes(const Folders& folders)
{
    const Path home = platform::HomeFolder();
    std::vector<Path> candidates{platform::NamedWinePrefix(), PrefixAbove(folders.trle),
                                 PrefixAbove(folders.program)};
    if (!home.empty()) {
        candidates.push_back(home / OnDisk::UsualPrefix);
        for (const std::string& place : Split(OnDisk::PrefixesOfOthers, '|'))
            candidates.push_back(home / place);
    }
    candidates.push_back(platform::UserDataFolder() / OnDisk::PrefixesInData);
    std::vector<Path> prefixes;
    const auto add = [&](const Path& folder) {
        if (IsPrefix(folder) &&
            std::none_of(prefixes.begin(), prefixes.end(),
                         [&](const Path& known) { return IsSameFolder(known, folder); }))
            prefixes.push_back(folder);
    };
    for (const Path& candidate : candidates) {
        add(candidate);
        if (candidate.empty() || IsPrefix(candidate))
            continue;
        // What cannot be listed holds no prefix that anybody could read.
        auto inside = ListSubfolders(candidate).ValueOr({});
        inside.resize(std::min(inside.size(), mostInOneFolder));
        std::for_each(inside.begin(), inside.end(), add);
    }
    return prefixes;
}

Path PathInPrefix(const Path& prefix, std::string_view windowsPath)
{
    const std::string_view text = Trim(windowsPath);
    if (text.size() < 3 || text[1] != ':' || (text[2] != '\\' && text[2] != '/'))
        return {};
    const Path drive = DriveFolder(prefix, FoldCase(text.substr(0, 1)).front());
    std::string rest = ReplaceAll(std::string{text.substr(3)}, "/", "\\");
    while (!rest.empty() && rest.back() == '\\')
        rest.pop_back();
    if (drive.empty() || rest.empty())
        return drive;
    const auto relative = SafeRelative(rest);
    return relative ? ResolvePath(drive / *relative) : Path{};
}

} // namespace kestrova
