#include "originals/trle_tree.h"

#include "core/copying.h"
#include "platform/files.h"
#include "words/originals.h"
#include "words/session.h"

#include <algorithm>

namespace kestrova
{

namespace
{

using platform::FileFacts;
using platform::FileKind;

struct Identity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    bool operator==(const Identity&) const = default;
};

struct Scan {
    const Path& root;
    const Heartbeat& heartbeat;
    UnseenParts unseenParts;
    const GoesThrough& goesThrough;
    LinkedTree tree{};
    std::vector<Identity> way{}; ///< the folders from the root to the one that is scanned

    /// The folder itself is always a failure.
    Status NotSeen(const Path& relative, ErrorCode code, const std::error_code& reason)
    {
        if (unseenParts == UnseenParts::Fail || relative.empty())
            return MakeFailure(code, TextOf(relative.empty() ? root : root / relative), reason);
        tree.unseen.push_back({relative, reason});
        return {};
    }

    Status Enter(const Path& relative)
    {
        const Path folder = relative.empty() ? root : root / relative;
        if (heartbeat && !heartbeat())
            return MakeFailure(ErrorCode::Stopped, TextOf(folder));
        FileFacts facts;
        if (const auto failure = platform::Look(folder, facts))
            return NotSeen(relative, ErrorCode::CannotRead, failure);
        const Identity self{facts.device, facts.inode};
        if (std::find(way.begin(), way.end(), self) != way.end())
            return {}; // a link to a folder above itself
        std::vector<platform::FolderEntry> entries;
        if (const auto failure = platform::ListFolder(folder, entries))
            return NotSeen(relative, ErrorCode::CannotRead, failure);
        if (!relative.empty())
            tree.folders.push_back(relative);
        way.push_back(self);
        std::sort(entries.begin(), entries.end(),
                  [](const auto& a, const auto& b) { return a.name < b.name; });
        for (const platform::FolderEntry& entry : entries)
            if (auto status = Take(relative / entry.name, entry); !status)
                return status;
        way.pop_back();
        return {};
    }

    Status Take(const Path& relative, const platform::FolderEntry& entry)
    {
        if (entry.name.starts_with(stagedPrefix))
            return {};
        FileKind kind = entry.kind;
        if (kind == FileKind::Link) {
            FileFacts behind;
            if (const auto failure = platform::Look(root / relative, behind))
                return NotSeen(relative, ErrorCode::CannotRead, failure);
            kind = behind.kind;
            if (kind == FileKind::Missing)
                return NotSeen(relative, ErrorCode::Missing,
                               std::make_error_code(std::errc::no_such_file_or_directory));
        }
        if (kind == FileKind::Folder && entry.kind == FileKind::Link && goesThrough &&
            !goesThrough(relative)) {
            tree.links.push_back(relative);
            return {};
        }
        if (kind == FileKind::Folder)
            return Enter(relative);
        if (kind == FileKind::File)
            tree.files.push_back(relative);
        return {};
    }
};

Failure NotCopied(const Path& source, const Path& target, const Failure& failure)
{
    if (failure.code == ErrorCode::Stopped)
        return failure; // who pressed it knows
    if (failure.code == ErrorCode::Missing)
        return Saying(GetMsg(Msg::BackupLinkBroken, {failure.subject}),
                      MakeFailure(failure.code, failure.subject));
    return Saying(GetMsg(Msg::ErrorCopyingFileTo, {TextOf(source)}) + TextOf(target) + "'",
                  failure);
}

} // namespace

Result<LinkedTree> ScanThroughLinks(const Path& folder, const Heartbeat& heartbeat,
                                    UnseenParts unseenParts, const GoesThrough& goesThrough)
{
    const Path root = ResolvePath(folder);
    Scan scan{root, heartbeat, unseenParts, goesThrough};
    if (auto status = scan.Enter({}); !status)
        return status.Error();
    return std::move(scan.tree);
}

Status CopyThroughLinks(const Path& source, const Path& target, ProgressScope& progress,
                        const PickSource& pick)
{
    const Path root = ResolvePath(source);
    const auto tree = ScanThroughLinks(root, [&] { return progress.Step(); });
    if (!tree)
        return NotCopied(root, target, tree.Error());
    if (const auto status = MakeFolders(target); !status)
        return NotCopied(root, target, status.Error());
    for (const Path& folder : tree->folders)
        if (const auto status = MakeFolders(target / folder); !status)
            return NotCopied(root / folder, target / folder, status.Error());
    std::uint64_t total = 0;
    for (const Path& file : tree->files)
        total += platform::FactsOf(root / file).size;
    std::uint64_t done = 0;
    for (const Path& file : tree->files) {
        const Path from = pick(root / file);
        const std::uint64_t size = platform::FactsOf(root / file).size;
        CopyOptions options;
        options.verify = Verify::Content;
        options.progress = [&](std::uint64_t bytes) {
            progress.SetBar(std::min(done + bytes, total), total);
            return progress.Step();
        };
        if (!from.empty())
            if (const auto status = CopyFileOver(from, target / file, options); !status)
                return NotCopied(root / file, target / file, status.Error());
        done += size;
        progress.SetBar(std::min(done, total), total);
        if (!progress.Step())
            return MakeFailure(ErrorCode::Stopped, TextOf(target));
    }
    return {};
}

} // namespace kestrova
