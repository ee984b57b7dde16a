#include "burning/disc_files.h"

#include "core/look.h"
#include "core/text.h"
#include "platform/real_path.h"
#include "words/burning.h"

#include <algorithm>
#include <numeric>
#include <unordered_set>

namespace kestrova
{

namespace
{

using platform::FileKind;

Failure NotForDisc(const Path& path, Message why, std::string reason = {})
{
    Failure failure =
        InWords(ErrorCode::Refused, GetMsg(why, {OnOneLine(TextOf(path))}), std::move(reason));
    failure.subject = TextOf(path);
    return failure;
}

bool HasControls(std::string_view name)
{
    return std::any_of(name.begin(), name.end(),
                       [](char letter) { return static_cast<unsigned char>(letter) < ' '; });
}

class DiscWalk
{
public:
    DiscWalk(const std::vector<Path>& excluded, const Heartbeat& heartbeat) : heartbeat_(heartbeat)
    {
        for (const Path& path : excluded)
            excluded_.insert(path.native());
    }

    Status Take(const BurnItem& item)
    {
        const auto facts = LookAt(item.source);
        if (!facts)
            return facts.Error();
        if (facts->kind == FileKind::Folder)
            return TakeFolder(item.source, item.target);
        std::string target = item.target;
        if (target.empty() || target.ends_with('/'))
            target += item.source.filename().native();
        return TakeFile(item.source, std::move(target));
    }

    std::vector<DiscFile> files;

private:
    struct Open {
        Path folder;
        std::string target; ///< empty, or with "/" at its end
    };

    bool IsExcluded(const Path& path) const { return excluded_.contains(path.native()); }

    Status TakeFolder(const Path& folder, const std::string& target)
    {
        std::vector<Open> open{{folder, target}};
        while (!open.empty()) {
            const Open next = std::move(open.back());
            open.pop_back();
            if (IsExcluded(next.folder))
                continue;
            if (auto taken = TakeEntries(next, open); !taken)
                return taken;
        }
        return {};
    }

    Status TakeEntries(const Open& at, std::vector<Open>& open)
    {
        std::vector<platform::FolderEntry> entries;
        if (const auto failure = platform::ListFolder(at.folder, entries))
            return NotForDisc(at.folder, Msg::BurnNotReadable, failure.message());
        std::sort(entries.begin(), entries.end(),
                  [](const auto& a, const auto& b) { return a.name < b.name; });
        const std::size_t waiting = open.size();
        for (const platform::FolderEntry& entry : entries) {
            if (entry.name.starts_with(stagedPrefix))
                continue;
            const Path path = at.folder / entry.name;
            if (entry.kind == FileKind::Folder) {
                if (HasControls(entry.name))
                    return NotForDisc(path, Msg::BurnNameUnfit);
                open.push_back({path, at.target + entry.name + "/"});
            } else if (auto taken = TakeFile(path, at.target + entry.name); !taken) {
                return taken;
            }
        }
        std::reverse(open.begin() + static_cast<std::ptrdiff_t>(waiting), open.end());
        if (entries.empty() && !at.target.empty())
            return TakeEmpty(at);
        return {};
    }

    Status TakeEmpty(const Open& at)
    {
        if (Status claimed = ClaimFolders(at.folder, at.target); !claimed)
            return claimed;
        DiscFile folder{at.target, at.folder, at.folder};
        folder.isFolder = true;
        files.push_back(std::move(folder));
        return {};
    }

    Status TakeFile(const Path& path, std::string target)
    {
        if (heartbeat_ && !heartbeat_())
            return Failure{ErrorCode::Stopped};
        if (IsExcluded(path))
            return {};
        if (HasControls(target))
            return NotForDisc(path, Msg::BurnNameUnfit);
        platform::FileFacts facts = platform::FactsOfLink(path);
        Path real = path;
        if (facts.kind == FileKind::Link) {
            if (platform::RealPath(path, real))
                return NotForDisc(path, Msg::BurnLinkToNothing);
            facts = platform::FactsOf(real);
            if (facts.kind == FileKind::Folder)
                return NotForDisc(path, Msg::BurnLinkToFolder);
        }
        if (facts.kind == FileKind::Missing)
            return NotForDisc(path, Msg::BurnPathMissing);
        if (facts.kind != FileKind::File)
            return NotForDisc(path, Msg::BurnNoFile);
        platform::File opened;
        if (const auto failure = platform::File::OpenForRead(real, opened))
            return NotForDisc(path, Msg::BurnNotReadable, failure.message());
        if (Status claimed = ClaimFolders(path, target); !claimed)
            return claimed;
        if (!places_.insert(target).second || folders_.contains(target + "/"))
            return NotForDisc(path, Msg::BurnPlaceTaken, target);
        files.push_back({std::move(target), path, std::move(real), facts.size, facts.modifiedNs});
        return {};
    }

    /// The folders above a place; none of them may be a file.
    Status ClaimFolders(const Path& source, const std::string& target)
    {
        for (std::size_t slash = target.rfind('/'); slash != std::string::npos && slash > 0;
             slash = target.rfind('/', slash - 1)) {
            if (!folders_.insert(target.substr(0, slash + 1)).second)
                return {};
            if (places_.contains(target.substr(0, slash)))
                return NotForDisc(source, Msg::BurnPlaceTaken, target);
        }
        return {};
    }

    const Heartbeat& heartbeat_;
    std::unordered_set<std::string> excluded_;
    std::unordered_set<std::string> places_;
    std::unordered_set<std::string> folders_; ///< each with "/" at its end
};

} // namespace

Result<std::vector<DiscFile>> DiscFilesOf(const std::vector<BurnItem>& items,
                                          const std::vector<Path>& noItems,
                                          const Heartbeat& heartbeat)
{
    DiscWalk walk{noItems, heartbeat};
    for (const BurnItem& item : items)
        if (Status taken = walk.Take(item); !taken)
            return taken.Error();
    return std::move(walk.files);
}

std::uint64_t BytesOf(const std::vector<DiscFile>& files)
{
    return std::accumulate(files.begin(), files.end(), std::uint64_t{0},
                           [](std::uint64_t sum, const DiscFile& file) { return sum + file.size; });
}

} // namespace kestrova
