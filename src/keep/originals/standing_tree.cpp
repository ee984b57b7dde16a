#include "originals/standing_tree.h"

#include "platform/real_path.h"

#include <algorithm>

namespace kestrova
{

namespace
{

using platform::FileFacts;
using platform::FileKind;

/// A longer path has no room for the names below it.
constexpr std::size_t longestPlace = 3500;
constexpr std::uint32_t ownerEnters = 0700;
constexpr std::uint32_t ownerReads = 0400;

class TreeScan
{
public:
    TreeScan(const Path& root, const KnownLinks& known, const Heartbeat& heartbeat)
        : root_(root), known_(known), heartbeat_(heartbeat)
    {
    }

    Status Enter(const Path& relative)
    {
        const Path folder = relative.empty() ? root_ : root_ / relative;
        if (heartbeat_ && !heartbeat_())
            return MakeFailure(ErrorCode::Stopped, TextOf(folder));
        FileFacts facts;
        if (const auto failure = platform::Look(folder, facts))
            return MakeFailure(ErrorCode::CannotRead, TextOf(folder), failure);
        OpenUp(folder, ownerEnters, facts);
        NoteRights(relative, facts);
        const std::pair self{facts.device, facts.inode};
        if (std::find(way_.begin(), way_.end(), self) != way_.end())
            return {}; // a link to a folder above itself
        std::vector<platform::FolderEntry> entries;
        if (const auto failure = platform::ListFolder(folder, entries))
            return MakeFailure(ErrorCode::CannotRead, TextOf(folder), failure);
        way_.push_back(self);
        std::sort(entries.begin(), entries.end(),
                  [](const auto& a, const auto& b) { return a.name < b.name; });
        for (const platform::FolderEntry& entry : entries)
            if (auto taken = Take(relative / entry.name, entry.kind); !taken)
                return taken;
        way_.pop_back();
        return {};
    }

    StandingTree tree;

private:
    /// What cannot be opened up is not read either, which says why.
    void OpenUp(const Path& place, std::uint32_t wanted, FileFacts& facts) const
    {
        if (known_.opensUp && (facts.mode & wanted) != wanted &&
            !platform::SetMode(place, facts.mode | wanted))
            facts.mode |= wanted;
    }

    void NoteRights(const Path& relative, const FileFacts& facts)
    {
        if (relative.empty())
            tree.rights = facts.mode;
        else if (!tree.folders.empty() && tree.folders.back().name == relative)
            tree.folders.back().rights = facts.mode; // behind a link it is somebody else's
    }

    [[nodiscard]] bool IsOther(const Path& relative, FileKind kind) const
    {
        return kind == FileKind::Other || IsUnlisted(relative) ||
               (kind == FileKind::Folder &&
                root_.native().size() + relative.native().size() > longestPlace);
    }

    Status Take(const Path& relative, FileKind kind)
    {
        if (IsOther(relative, kind)) {
            tree.others.push_back(relative);
            return {};
        }
        if (kind == FileKind::Link) {
            StandingLink link{relative, {}};
            if (const auto failure = platform::LinkTarget(root_ / relative, link.target))
                return MakeFailure(ErrorCode::CannotRead, TextOf(root_ / relative), failure);
            tree.links.push_back(link);
            if (!IsKnown(link))
                return {};
            kind = platform::FactsOf(root_ / relative).kind;
            if (kind == FileKind::Folder)
                return Enter(relative);
        } else if (kind == FileKind::Folder) {
            tree.folders.push_back({relative});
            return Enter(relative);
        }
        return kind == FileKind::File ? TakeFile(relative) : Status{};
    }

    Status TakeFile(const Path& relative)
    {
        FileFacts facts;
        if (const auto failure = platform::Look(root_ / relative, facts))
            return MakeFailure(ErrorCode::CannotRead, TextOf(root_ / relative), failure);
        OpenUp(root_ / relative, ownerReads, facts);
        tree.files.push_back({relative, facts.size, facts.modifiedNs, facts.changedNs, facts.inode,
                              false, facts.mode});
        return {};
    }

    [[nodiscard]] bool IsKnown(const StandingLink& link) const
    {
        return known_.all ||
               std::any_of(known_.links.begin(), known_.links.end(),
                           [&](const StandingLink& known) {
                               return known.name == link.name && known.target == link.target;
                           });
    }

    const Path& root_;
    const KnownLinks& known_;
    const Heartbeat& heartbeat_;
    std::vector<std::pair<std::uint64_t, std::uint64_t>> way_; ///< folders down to this one
};

} // namespace

Result<StandingTree> TreeOf(const Path& folder, const KnownLinks& known, const Heartbeat& heartbeat)
{
    const Path root = ResolvePath(folder);
    TreeScan scan{root, known, heartbeat};
    if (auto status = scan.Enter({}); !status)
        return status.Error();
    return std::move(scan.tree);
}

StandingFiles FilesByName(const StandingTree& tree)
{
    StandingFiles files;
    for (const StandingFile& file : tree.files)
        files.emplace(file.name.native(), &file);
    return files;
}

bool IsUnlisted(const Path& name)
{
    return name.filename().native().starts_with(stagedPrefix);
}

bool IsUntouched(const StandingFile& before, const StandingFile& now)
{
    return before.size == now.size && before.modifiedNs == now.modifiedNs &&
           before.changedNs == now.changedNs && before.inode == now.inode;
}

} // namespace kestrova
