#include "core/whole_tree.h"

#include "core/copying.h"
#include "core/inside.h"
#include "core/look.h"
#include "core/parallel.h"
#include "platform/real_path.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <set>

namespace kestrova
{

namespace
{

using platform::FileFacts;
using platform::FileKind;

Status Beats(const Heartbeat& heartbeat)
{
    return !heartbeat || heartbeat() ? Status{} : MakeFailure(ErrorCode::Stopped, {});
}

/// Takes one entry, and notes its folder for the walk.
Status TakeEntry(const Path& root, const Path& name, WholeTree& tree)
{
    WholeEntry entry{name, {}};
    if (const auto failure = platform::LookAtLink(root / name, entry.facts))
        return MakeFailure(ErrorCode::CannotRead, TextOf(root / name), failure);
    switch (entry.facts.kind) {
    case FileKind::Folder:
        tree.folders.push_back(std::move(entry));
        return {};
    case FileKind::File:
        tree.bytes += entry.facts.size;
        tree.files.push_back(std::move(entry));
        return {};
    case FileKind::Link:
        tree.links.push_back(std::move(entry));
        return {};
    case FileKind::Missing: // somebody took it away just now
        return {};
    case FileKind::Other:
        break;
    }
    return MakeFailure(ErrorCode::Refused, TextOf(root / name));
}

/// Copies the links of a tree.
class LinkCopies
{
public:
    LinkCopies(const WholeTree& tree, const Path& from, const Path& to)
        : tree_(tree), from_(from.lexically_normal()), to_(to)
    {
        for (const auto* entries : {&tree.folders, &tree.files, &tree.links})
            for (const WholeEntry& entry : *entries)
                if (!entry.name.has_parent_path())
                    tops_.insert(entry.name);
    }

    Status Run()
    {
        for (const WholeEntry& link : tree_.links) {
            Path target;
            if (const auto failure = platform::LinkTarget(from_ / link.name, target))
                return MakeFailure(ErrorCode::CannotRead, TextOf(from_ / link.name), failure);
            if (const auto failure = platform::MakeLink(Copied(link, target), to_ / link.name))
                return MakeFailure(ErrorCode::CannotWrite, TextOf(to_ / link.name), failure);
        }
        return {};
    }

private:
    /// What the copy says. One that leads out of the tree by a relative way would lead elsewhere
    /// from its new place.
    [[nodiscard]] Path Copied(const WholeEntry& link, const Path& target) const
    {
        const Path leads = (from_ / link.name.parent_path() / target).lexically_normal();
        const Path inside = leads.lexically_relative(from_);
        const bool copied = LiesInside(leads, from_) && tops_.contains(*inside.begin());
        if (!copied)
            return target.is_relative() ? leads : target;
        return target.is_relative() ? target : to_ / inside;
    }

    const WholeTree& tree_;
    const Path from_;
    const Path& to_;
    std::set<Path> tops_;
};

/// Copies the files on all cores.
class FileCopies
{
public:
    FileCopies(const WholeTree& tree, const Path& from, const Path& to)
        : tree_(tree), from_(from), to_(to)
    {
    }

    Status Run(const CopiedBytes& progress)
    {
        const auto beat = [&] {
            if (progress && !progress(done_))
                stopped_ = true;
            return !stopped_ && !failed_;
        };
        const bool all = RunOnAllCores(
            tree_.files.size(), [&](std::size_t index) { Copy(tree_.files[index]); }, beat);
        if (failed_)
            return failure_;
        return all && !stopped_ ? Status{} : MakeFailure(ErrorCode::Stopped, {});
    }

private:
    void Copy(const WholeEntry& file)
    {
        if (failed_ || stopped_)
            return;
        // Within one file system a second name is the file itself, and cannot differ from it.
        if (!platform::HardLink(from_ / file.name, to_ / file.name)) {
            done_ += file.facts.size;
            return;
        }
        std::uint64_t counted = 0;
        CopyOptions options;
        options.verify = Verify::Content;
        options.spelled = true;
        options.progress = [&](std::uint64_t bytes) {
            done_ += bytes - counted;
            counted = bytes;
            return !stopped_ && !failed_;
        };
        const auto copied = CopyFileOver(from_ / file.name, to_ / file.name, options);
        done_ += file.facts.size - std::min(counted, file.facts.size);
        if (copied || stopped_)
            return;
        const std::lock_guard lock{guard_};
        if (!failed_)
            failure_ = copied.Error();
        failed_ = true;
    }

    const WholeTree& tree_;
    const Path& from_;
    const Path& to_;
    std::atomic<std::uint64_t> done_{0};
    std::atomic<bool> stopped_{false};
    std::atomic<bool> failed_{false};
    std::mutex guard_;
    Failure failure_;
};

} // namespace

Result<WholeTree> ScanWhole(const Path& root, const std::vector<std::string>& names,
                            const Heartbeat& heartbeat)
{
    WholeTree tree;
    std::vector<std::string> sorted = names;
    std::sort(sorted.begin(), sorted.end());
    for (const std::string& name : sorted)
        if (auto status = TakeEntry(root, name, tree); !status)
            return status.Error();
    for (std::size_t i = 0; i < tree.folders.size(); ++i) {
        if (auto status = Beats(heartbeat); !status)
            return status.Error();
        const Path folder = tree.folders[i].name;
        std::vector<platform::FolderEntry> entries;
        if (const auto failure = platform::ListFolder(root / folder, entries))
            return MakeFailure(ErrorCode::CannotRead, TextOf(root / folder), failure);
        std::sort(entries.begin(), entries.end(),
                  [](const auto& one, const auto& other) { return one.name < other.name; });
        for (const platform::FolderEntry& entry : entries)
            if (auto status = TakeEntry(root, folder / entry.name, tree); !status)
                return status.Error();
    }
    return tree;
}

bool IsUnchanged(const FileFacts& before, const FileFacts& now)
{
    if (before.kind != now.kind || before.device != now.device || before.inode != now.inode)
        return false;
    // A folder's own times tell of its entries, which are looked at themselves.
    return before.kind == FileKind::Folder ||
           (before.size == now.size && before.modifiedNs == now.modifiedNs &&
            before.changedNs == now.changedNs);
}

Result<bool> IsWholeCopy(const WholeTree& before, const WholeTree& now, const Path& root,
                         const Path& copy, const Heartbeat& heartbeat)
{
    const auto isNamed = [](const WholeEntry& one, const WholeEntry& other) {
        return one.name == other.name && one.facts.kind == other.facts.kind;
    };
    const auto areNamed = [&](const std::vector<WholeEntry>& one,
                              const std::vector<WholeEntry>& other) {
        return std::equal(one.begin(), one.end(), other.begin(), other.end(), isNamed);
    };
    if (!areNamed(before.folders, now.folders) || !areNamed(before.files, now.files) ||
        !areNamed(before.links, now.links))
        return false;
    for (std::size_t i = 0; i < now.files.size(); ++i) {
        if (IsUnchanged(before.files[i].facts, now.files[i].facts))
            continue;
        const auto copied = HasCopy(now.files[i], root, copy, heartbeat);
        if (!copied || !*copied)
            return copied;
    }
    return true;
}

Status CopyWhole(const WholeTree& tree, const Path& from, const Path& to,
                 const CopiedBytes& progress)
{
    for (const WholeEntry& folder : tree.folders)
        if (const auto failure = platform::MakeFolder(to / folder.name))
            return MakeFailure(ErrorCode::CannotWrite, TextOf(to / folder.name), failure);
    if (auto status = LinkCopies{tree, from, to}.Run(); !status)
        return status;
    return FileCopies{tree, from, to}.Run(progress);
}

Status RemoveWhole(const WholeTree& tree, const Path& root, const MayGo& mayGo,
                   const Heartbeat& heartbeat)
{
    Status answer;
    const auto fail = [&](ErrorCode code, const Path& path, const std::error_code& failure) {
        if (answer)
            answer = MakeFailure(code, TextOf(path), failure);
    };
    for (const auto* entries : {&tree.files, &tree.links})
        for (const WholeEntry& entry : *entries) {
            if (auto status = Beats(heartbeat); !status)
                return status;
            const auto may = mayGo(entry);
            if (!may && may.Error().code == ErrorCode::Stopped)
                return may.Error();
            if (!may && answer)
                answer = may.Error();
            if (!may || !*may)
                continue;
            const Path file = root / entry.name;
            if (const auto failure = platform::Unlink(file);
                failure && failure != std::errc::no_such_file_or_directory)
                fail(ErrorCode::CannotDelete, file, failure);
        }
    for (std::size_t i = tree.folders.size(); i-- > 0;) {
        const Path folder = root / tree.folders[i].name;
        if (const auto failure = platform::RemoveFolder(folder);
            failure && failure != std::errc::directory_not_empty &&
            failure != std::errc::no_such_file_or_directory)
            fail(ErrorCode::CannotDelete, folder, failure);
    }
    return answer;
}

Result<bool> HasCopy(const WholeEntry& entry, const Path& root, const Path& other,
                     const Heartbeat& heartbeat)
{
    const Path copy = other / entry.name;
    FileFacts facts;
    if (const auto failure = platform::LookAtLink(copy, facts))
        return MakeFailure(ErrorCode::CannotRead, TextOf(copy), failure);
    if (facts.kind != entry.facts.kind)
        return false;
    if (facts.kind == FileKind::Link || IsSameThing(facts, entry.facts))
        return true;
    if (facts.kind != FileKind::File || facts.size != entry.facts.size)
        return false;
    return HoldSameBytes(root / entry.name, copy, heartbeat);
}

} // namespace kestrova
