#include "intake/drive_watch.h"

#include "core/files.h"
#include "core/inside.h"
#include "core/text.h"
#include "intake/file_names.h"

#include <algorithm>

namespace kestrova
{

DriveWatch::DriveWatch(const Path& prefix)
    : drive_(prefix.empty() ? prefix : ResolvePath(prefix / OnDisk::WineDrive))
{
    if (!drive_.empty() && FolderExists(drive_))
        if (auto tree = TreeOf(drive_, {}))
            before_ = std::move(*tree);
}

std::vector<std::string> DriveWatch::Written(const std::vector<Path>& passedOver) const
{
    std::vector<std::string> names;
    const auto now = drive_.empty() || !FolderExists(drive_) ? Result<StandingTree>{StandingTree{}}
                                                             : TreeOf(drive_, {});
    if (!now)
        return names;
    const StandingTree none;
    const StandingFiles old = FilesByName(before_ ? *before_ : none);
    for (const StandingFile& file : now->files) {
        const auto stood = old.find(file.name.native());
        if (stood != old.end() && IsUntouched(*stood->second, file))
            continue;
        // Wine's own, which it makes when it first runs.
        if (!before_ && EqualNames(file.name.begin()->native(), OnDisk::WindowsFolder))
            continue;
        if (std::none_of(passedOver.begin(), passedOver.end(), [&](const Path& folder) {
                return LiesInside(drive_ / file.name, folder);
            }))
            names.push_back(TextOf(file.name));
    }
    return names;
}

} // namespace kestrova
