#include "core/files.h"

#include "core/look.h"
#include "core/staged_file.h"
#include "core/text.h"
#include "platform/file_content.h"
#include "platform/files.h"
#include "platform/folder_memory.h"
#include "platform/real_path.h"

#include <algorithm>

namespace kestrova
{

using platform::FileFacts;
using platform::FileKind;

namespace
{

bool IsStagedName(std::string_view name)
{
    return name.starts_with(stagedPrefix);
}

/// Names of a folder in the order of the system; a folder that is not there has none.
Result<std::vector<platform::FolderEntry>> EntriesOf(const Path& folder)
{
    std::vector<platform::FolderEntry> entries;
    const auto failure = platform::ListFolder(folder.empty() ? Path{"."} : folder, entries);
    if (failure && failure != std::errc::no_such_file_or_directory &&
        failure != std::errc::not_a_directory)
        return MakeFailure(ErrorCode::CannotRead, TextOf(folder), failure);
    return entries;
}

/// All spellings of a name that a folder holds, in one order whatever the system's is, so that a
/// second look finds the same file first; a folder that is not there has none.
Result<std::vector<std::string>> SpellingsIn(const Path& folder, const std::string& name)
{
    std::vector<std::string> names;
    const auto failure =
        platform::NamesLike(folder.empty() ? Path{"."} : folder, name, &FoldCase, names);
    if (failure && failure != std::errc::no_such_file_or_directory &&
        failure != std::errc::not_a_directory)
        return MakeFailure(ErrorCode::CannotRead, TextOf(folder), failure);
    std::sort(names.begin(), names.end());
    return names;
}

/// The existing spelling of a name in a folder; the name itself when there is none.
Result<std::string> SpellingIn(const Path& folder, const std::string& name)
{
    const auto names = SpellingsIn(folder, name);
    if (!names)
        return names.Error();
    const bool exact = std::find(names->begin(), names->end(), name) != names->end();
    return exact || names->empty() ? name : names->front();
}

/// True for a link that leads to a file inside the tree of `root`.
Result<bool> StaysInside(const Path& link, const Path& root)
{
    FileFacts facts;
    if (const auto failure = platform::Look(link, facts))
        return MakeFailure(ErrorCode::CannotRead, TextOf(link), failure);
    if (facts.kind != FileKind::File)
        return false;
    Path target;
    if (const auto failure = platform::RealPath(link, target))
        return MakeFailure(ErrorCode::CannotRead, TextOf(link), failure);
    Path top;
    if (const auto failure = platform::RealPath(root, top))
        return MakeFailure(ErrorCode::CannotRead, TextOf(root), failure);
    return std::mismatch(top.begin(), top.end(), target.begin(), target.end()).first == top.end();
}

/// Links that count as files become ones; the others stay links.
Status SettleLinks(const Path& folder, const Path& root,
                   std::vector<platform::FolderEntry>& entries)
{
    for (platform::FolderEntry& entry : entries) {
        if (entry.kind != FileKind::Link)
            continue;
        const auto counts = StaysInside(folder / entry.name, root);
        if (!counts)
            return counts.Error();
        if (*counts)
            entry.kind = FileKind::File;
    }
    return {};
}

struct Listed {
    std::string name;
    std::string key; ///< the upper-cased name
};

/// The wanted names sorted by upper-cased name, then by bytes so that twins have an order too.
template <class Wanted>
std::vector<Path> SortedPaths(const Path& folder, const std::vector<platform::FolderEntry>& entries,
                              Wanted wanted)
{
    std::vector<Listed> names;
    for (const auto& entry : entries)
        if (!IsStagedName(entry.name) && wanted(entry))
            names.push_back({entry.name, UpperCase(entry.name)});
    std::sort(names.begin(), names.end(), [](const Listed& a, const Listed& b) {
        return a.key != b.key ? a.key < b.key : a.name < b.name;
    });
    std::vector<Path> paths;
    paths.reserve(names.size());
    for (const Listed& entry : names)
        paths.push_back(folder / entry.name);
    return paths;
}

template <class Wanted> Result<std::vector<Path>> ListWanted(const Path& folder, Wanted wanted)
{
    const auto entries = EntriesOf(folder);
    if (!entries)
        return entries.Error();
    return SortedPaths(folder, *entries, wanted);
}

bool IsFileEntry(const platform::FolderEntry& entry)
{
    return entry.kind == FileKind::File;
}

bool IsFolderEntry(const platform::FolderEntry& entry)
{
    return entry.kind == FileKind::Folder;
}

} // namespace

Result<Path> FindPath(const Path& path)
{
    if (path.empty() || platform::FactsOfLink(path).kind != FileKind::Missing)
        return path;
    if (!path.has_filename() || path.filename() == "..") { // a trailing separator, or the way up
        if (!path.has_parent_path() || path.parent_path() == path)
            return path;
        const auto parent = FindPath(path.parent_path());
        return parent ? Result<Path>{*parent / path.filename()} : parent;
    }
    const auto parent =
        path.has_parent_path() ? FindPath(path.parent_path()) : Result<Path>{Path{}};
    if (!parent)
        return parent;
    if (const Path here = *parent / path.filename();
        here != path && platform::FactsOfLink(here).kind != FileKind::Missing)
        return here;
    const auto spelling = SpellingIn(*parent, path.filename().native());
    if (!spelling)
        return spelling.Error();
    return *parent / *spelling;
}

Path ResolvePath(const Path& path)
{
    auto found = FindPath(path);
    return found ? *found : path;
}

Result<std::vector<Path>> CaseTwins(const Path& path)
{
    const auto folder = FindPath(path.parent_path());
    if (!folder)
        return folder.Error();
    const auto names = SpellingsIn(*folder, path.filename().native());
    if (!names)
        return names.Error();
    std::vector<Path> twins;
    for (const std::string& name : *names)
        if (!IsStagedName(name))
            twins.push_back(*folder / name);
    return twins;
}

bool FileExists(const Path& file)
{
    return platform::FactsOf(ResolvePath(file)).kind == FileKind::File;
}

bool FolderExists(const Path& folder)
{
    return platform::FactsOf(ResolvePath(folder)).kind == FileKind::Folder;
}

Status MakeFolder(const Path& folder)
{
    const auto place = FindPath(folder);
    if (!place)
        return place.Error();
    if (platform::FactsOf(*place).kind == FileKind::Folder)
        return {};
    if (const auto failure = platform::MakeFolder(*place))
        return MakeFailure(ErrorCode::CannotWrite, TextOf(*place), failure);
    return {};
}

Status MakeFolders(const Path& folder)
{
    const auto place = FindPath(folder);
    if (!place)
        return place.Error();
    if (const auto failure = platform::MakeFolders(*place))
        return MakeFailure(ErrorCode::CannotWrite, TextOf(*place), failure);
    return {};
}

Result<std::vector<Path>> ListFiles(const Path& folder, std::string_view pattern)
{
    const auto place = FindPath(folder);
    if (!place)
        return place.Error();
    auto entries = EntriesOf(*place);
    if (!entries)
        return entries.Error();
    std::erase_if(*entries, [&](const platform::FolderEntry& entry) {
        return !MatchesPattern(entry.name, pattern);
    });
    if (auto settled = SettleLinks(*place, *place, *entries); !settled)
        return settled.Error();
    return SortedPaths(*place, *entries, IsFileEntry);
}

Result<std::vector<Path>> ListSubfolders(const Path& folder)
{
    const auto place = FindPath(folder);
    if (!place)
        return place.Error();
    return ListWanted(*place, IsFolderEntry);
}

Result<Tree> ScanTree(const Path& folder, const Heartbeat& heartbeat)
{
    auto tree = ScanTreeIfThere(folder, heartbeat);
    if (tree && tree->folders.empty())
        return MakeFailure(ErrorCode::Missing, TextOf(folder));
    return tree;
}

Result<Tree> ScanTreeIfThere(const Path& folder, const Heartbeat& heartbeat)
{
    const auto root = FindPath(folder);
    if (!root)
        return root.Error();
    Tree tree;
    FileFacts facts;
    if (const auto failure = platform::Look(*root, facts))
        return MakeFailure(ErrorCode::CannotRead, TextOf(*root), failure);
    if (facts.kind != FileKind::Folder)
        return tree;
    tree.folders.push_back(*root);
    for (std::size_t i = 0; i < tree.folders.size(); ++i) {
        const Path current = tree.folders[i];
        if (heartbeat && !heartbeat())
            return MakeFailure(ErrorCode::Stopped, TextOf(current));
        std::vector<platform::FolderEntry> entries;
        if (const auto failure = platform::ListFolder(current, entries))
            return MakeFailure(ErrorCode::CannotRead, TextOf(current), failure);
        if (auto settled = SettleLinks(current, *root, entries); !settled)
            return settled.Error();
        for (Path& file : SortedPaths(current, entries, IsFileEntry))
            tree.files.push_back(std::move(file));
        for (Path& child : SortedPaths(current, entries, IsFolderEntry))
            tree.folders.push_back(std::move(child));
    }
    return tree;
}

Result<double> FolderSize(const Path& folder, std::string_view pattern)
{
    const auto tree = ScanTreeIfThere(folder);
    if (!tree)
        return tree.Error();
    double sum = 0;
    for (const Path& file : tree->files)
        if (MatchesPattern(file.filename().native(), pattern))
            sum += static_cast<double>(platform::FactsOf(file).size);
    return sum;
}

std::uint64_t FileSize(const Path& file)
{
    return platform::FactsOf(ResolvePath(file)).size;
}

Status DeleteFile(const Path& file)
{
    const auto place = FindPath(file);
    return place ? DeleteSpelled(*place) : place.Error();
}

Status DeleteSpelled(const Path& file)
{
    if (const auto failure = platform::Unlink(file);
        failure && failure != std::errc::no_such_file_or_directory &&
        failure != std::errc::not_a_directory)
        return MakeFailure(ErrorCode::CannotDelete, TextOf(file), failure);
    return {};
}

Status DeleteMatching(const Path& folder, std::string_view pattern)
{
    const auto place = FindPath(folder);
    if (!place)
        return place.Error();
    // A device or a pipe is nothing that this program ever made.
    const auto files = ListWanted(*place, [&](const platform::FolderEntry& entry) {
        return (entry.kind == FileKind::File || entry.kind == FileKind::Link) &&
               MatchesPattern(entry.name, pattern);
    });
    if (!files)
        return files.Error();
    for (const Path& file : *files)
        if (const auto failure = platform::Unlink(file))
            return MakeFailure(ErrorCode::CannotDelete, TextOf(file), failure);
    return {};
}

Status RemoveFolder(const Path& folder)
{
    const Path place = ResolvePath(folder);
    if (auto status = DeleteMatching(place, "*"); !status)
        return status;
    ClearStagedLeftovers(place);
    if (const auto failure = platform::RemoveFolder(place))
        return MakeFailure(ErrorCode::CannotDelete, TextOf(place), failure);
    return {};
}

bool SameContent(const Path& a, const Path& b, const Heartbeat& heartbeat)
{
    return HoldSameBytes(ResolvePath(a), ResolvePath(b), heartbeat).ValueOr(false);
}

Result<std::string> ReadWholeFile(const Path& file, std::uint64_t limit)
{
    const auto place = FindPath(file);
    if (!place)
        return place.Error();
    std::string content;
    if (const auto failure = platform::ReadAll(*place, content, limit))
        return MakeFailure(ErrorCode::CannotRead, TextOf(*place), failure);
    return content;
}

} // namespace kestrova
