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

ChangedBelow ChangedSince(const Path& folder, std::int64_t sinceNs,
                          const std::vector<Path>& passedOver, const Heartbeat& heartbeat)
{
    constexpr std::size_t mostFolders = 50'000;
    constexpr std::size_t mostNames = 1000;
    ChangedBelow changed;
    const std::uint64_t disk = platform::FactsOf(folder).device;
    std::vector<Path> waiting{folder};
    for (std::size_t looked = 0; !waiting.empty(); ++looked) {
        if (looked == mostFolders || changed.names.size() >= mostNames || !heartbeat()) {
            changed.whole = false;
            break;
        }
        const Path next = std::move(waiting.back());
        waiting.pop_back();
        std::vector<platform::FolderEntry> entries;
        if (platform::ListFolder(next, entries))
            continue;
        for (const platform::FolderEntry& entry : entries) {
            const Path place = next / entry.name;
            const auto facts = platform::FactsOfLink(place);
            const bool isOurs =
                std::any_of(passedOver.begin(), passedOver.end(),
                            [&](const Path& known) { return LiesInside(place, known); });
            if (isOurs || facts.device != disk)
                continue;
            if (facts.kind == platform::FileKind::Folder)
                waiting.push_back(place);
            else if (facts.kind == platform::FileKind::File && facts.changedNs >= sinceNs)
                changed.names.push_back(TextOf(place.lexically_relative(folder)));
        }
    }
    return changed;
}

} // namespace kestrova
