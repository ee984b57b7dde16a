#include "editor/compare_folders.h"

#include "core/inside.h"
#include "core/look.h"
#include "core/parallel.h"
#include "core/text.h"
#include "originals/trle_tree.h"
#include "platform/real_path.h"

#include <algorithm>
#include <atomic>
#include <tuple>
#include <unordered_map>

namespace kestrova
{

namespace
{

/// A file of one folder, and what stands behind its name.
struct FoundFile {
    Path name;
    std::string folded;
    Path place;
    platform::FileFacts facts{};
    std::string reason{};    ///< why nothing can be said of it
    bool isUnlisted = false; ///< a folder, whatever it holds
    bool isLink = false;     ///< to a folder, which counts as one thing
    bool paired = false;
};

std::vector<FoundFile> Sorted(std::vector<FoundFile> files)
{
    std::sort(files.begin(), files.end(), [](const FoundFile& a, const FoundFile& b) {
        return std::tie(a.folded, a.name) < std::tie(b.folded, b.name);
    });
    return files;
}

bool LeadsAbove(const Path& link, const Path& folder)
{
    Path place;
    Path real;
    return !platform::RealPath(link, place) && !platform::RealPath(folder, real) &&
           LiesInside(real, place);
}

/// A link is gone through where there is something to compare what lies behind it with.
bool HasCounterpart(const Path& root, const Path& other, const Path& link)
{
    const Path twin = ResolvePath(other / link);
    const bool isLink = platform::FactsOfLink(twin).kind == platform::FileKind::Link;
    return FolderExists(twin) && !(isLink && platform::IsSameFile(root / link, twin)) &&
           !LeadsAbove(root / link, root) && !LeadsAbove(root / link, other);
}

Result<std::vector<FoundFile>> FilesIn(const Path& folder, const Path& other,
                                       const Heartbeat& heartbeat)
{
    const auto root = FindPath(folder);
    if (!root)
        return root.Error();
    const auto tree =
        ScanThroughLinks(*root, heartbeat, UnseenParts::AreListed,
                         [&](const Path& link) { return HasCounterpart(*root, other, link); });
    if (!tree)
        return tree.Error();
    std::vector<FoundFile> files;
    const auto take = [&](const Path& name) -> FoundFile& {
        return files.emplace_back(FoundFile{name, FoldCase(name.native()), *root / name});
    };
    for (const Path& name : tree->files) {
        FoundFile& file = take(name);
        if (const auto failure = platform::Look(file.place, file.facts))
            file.reason = failure.message();
        if (heartbeat && !heartbeat())
            return MakeFailure(ErrorCode::Stopped, TextOf(folder));
    }
    for (const Path& name : tree->links) {
        FoundFile& link = take(name);
        link.facts = platform::FactsOf(link.place);
        link.facts.size = 0;
        link.isLink = true;
    }
    for (const Unseen& part : tree->unseen) {
        FoundFile& file = take(part.name);
        file.reason = part.reason.message();
        file.isUnlisted = part.reason != std::errc::no_such_file_or_directory;
    }
    return Sorted(std::move(files));
}

/// What one folder has below a name behind which nobody could look in the other is no difference
/// that anybody knows of.
void MarkBelowUnseen(std::vector<ComparedFile>& files, const std::vector<FoundFile>& other,
                     FileState alone)
{
    std::unordered_map<std::string_view, const std::string*> unseen;
    for (const FoundFile& file : other)
        if (!file.reason.empty())
            unseen.emplace(file.folded, &file.reason);
    for (ComparedFile& file : files) {
        if (unseen.empty() || file.state != alone)
            continue;
        for (Path folder = file.name.parent_path(); !folder.empty(); folder = folder.parent_path())
            if (const auto found = unseen.find(FoldCase(folder.native())); found != unseen.end()) {
                file.state = FileState::Unread;
                file.reason = *found->second;
            }
    }
}

/// What both folders have under one name, and what one of them alone has.
std::vector<ComparedFile> Paired(std::vector<FoundFile> before, std::vector<FoundFile> after,
                                 std::vector<std::size_t>& toRead)
{
    std::vector<ComparedFile> files;
    const auto pair = [&](FoundFile& old, FoundFile& now) {
        old.paired = now.paired = true;
        ComparedFile file{now.name,  FileState::Equal, old.place,
                          now.place, old.facts.size,   now.facts.size};
        file.reason = old.reason.empty() ? now.reason : old.reason;
        if (!file.reason.empty())
            file.state = FileState::Unread;
        else if (old.isLink || now.isLink)
            file.state = IsSameThing(old.facts, now.facts) ? FileState::Equal : FileState::Changed;
        else if (file.sizeBefore != file.sizeAfter)
            file.state = FileState::Changed;
        else if (file.sizeAfter > 0 && !IsSameThing(old.facts, now.facts))
            toRead.push_back(files.size());
        files.push_back(std::move(file));
    };
    std::unordered_map<std::string_view, FoundFile*> spelled;
    for (FoundFile& file : after)
        spelled.emplace(file.name.native(), &file);
    for (FoundFile& file : before)
        if (const auto found = spelled.find(file.name.native()); found != spelled.end())
            pair(file, *found->second);
    // Both are sorted, so what is left of one name meets in its order.
    auto next = after.begin();
    for (FoundFile& file : before) {
        if (file.paired)
            continue;
        while (next != after.end() && (next->paired || next->folded < file.folded))
            ++next;
        if (next != after.end() && next->folded == file.folded)
            pair(file, *next);
        else
            files.push_back({file.name, FileState::Missing, file.place, {}, file.facts.size});
        if (!file.paired && file.isUnlisted)
            files.back().state = FileState::Unread, files.back().reason = file.reason;
    }
    for (FoundFile& file : after) {
        if (file.paired)
            continue;
        files.push_back({file.name, FileState::New, {}, file.place, 0, file.facts.size});
        if (file.isUnlisted)
            files.back().state = FileState::Unread, files.back().reason = file.reason;
    }
    MarkBelowUnseen(files, before, FileState::New);
    MarkBelowUnseen(files, after, FileState::Missing);
    return files;
}

/// Reads what is as long in both folders, on all cores.
Status ReadPairs(std::vector<ComparedFile>& files, const std::vector<std::size_t>& toRead,
                 ProgressScope& progress)
{
    std::uint64_t total = 0;
    for (const std::size_t index : toRead)
        total += files[index].sizeAfter;
    std::atomic<std::uint64_t> done{0};
    std::atomic<bool> stopped{false};
    const auto compare = [&](std::size_t i) {
        ComparedFile& file = files[toRead[i]];
        const auto same = HoldSameBytes(file.before, file.after, [&] { return !stopped.load(); });
        if (!same && same.Error().code != ErrorCode::Stopped) {
            file.state = FileState::Unread;
            file.reason = same.Error().reason;
        } else if (same && !*same) {
            file.state = FileState::Changed;
        }
        done += file.sizeAfter;
    };
    const bool all = RunOnAllCores(toRead.size(), compare, [&] {
        progress.SetBar(done, total);
        stopped = !progress.Step();
        return !stopped;
    });
    return all && !stopped ? Status{} : MakeFailure(ErrorCode::Stopped, {});
}

} // namespace

std::string_view WordOfState(FileState state)
{
    constexpr std::string_view words[fileStates] = {"new", "missing", "changed", "equal", "unread"};
    return words[static_cast<std::size_t>(state)];
}

Result<std::vector<ComparedFile>> CompareFolders(const Path& before, const Path& after,
                                                 ProgressScope& progress)
{
    const auto step = [&] { return progress.Step(); };
    auto old = FilesIn(before, after, step);
    if (!old)
        return old.Error();
    auto now = FilesIn(after, before, step);
    if (!now)
        return now.Error();
    std::vector<std::size_t> toRead;
    auto files = Paired(std::move(*old), std::move(*now), toRead);
    if (auto status = ReadPairs(files, toRead, progress); !status)
        return status.Error();
    std::vector<std::pair<std::string, std::size_t>> order;
    for (std::size_t i = 0; i < files.size(); ++i)
        order.emplace_back(FoldCase(files[i].name.native()), i);
    std::sort(order.begin(), order.end(), [&](const auto& a, const auto& b) {
        return std::tie(a.first, files[a.second].name) < std::tie(b.first, files[b.second].name);
    });
    std::vector<ComparedFile> sorted;
    for (const auto& place : order)
        sorted.push_back(std::move(files[place.second]));
    return sorted;
}

} // namespace kestrova
