#include "core/files.h"

#include "catalogue/message.h"
#include "core/staged_file.h"
#include "core/text.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <fmt/format.h>

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

/// The existing spelling of a name in a folder; empty when there is none.
std::string SpellingIn(const Path& folder, const std::string& name)
{
    std::vector<platform::FolderEntry> entries;
    if (platform::ListFolder(folder, entries))
        return {};
    std::string best;
    for (const auto& entry : entries)
        if (entry.name == name)
            return name;
    for (const auto& entry : entries)
        if (EqualNames(entry.name, name) && (best.empty() || entry.name < best))
            best = entry.name;
    return best;
}

/// Where a link leads, provided that this is a file inside the tree of `root`.
bool StaysInside(const Path& link, const Path& root)
{
    std::error_code failure;
    const Path target = std::filesystem::canonical(link, failure);
    if (failure)
        return false;
    const Path top = std::filesystem::canonical(root, failure);
    if (failure)
        return false;
    const auto [end, place] = std::mismatch(top.begin(), top.end(), target.begin(), target.end());
    return end == top.end() && platform::FactsOf(target).kind == FileKind::File;
}

struct Listed {
    std::string name;
    std::string key; ///< the upper-cased name
};

/// Names of a folder sorted by upper-cased name, then by bytes so that twins have an order too.
template <class Wanted> std::vector<Listed> SortedNames(const Path& folder, Wanted wanted)
{
    std::vector<platform::FolderEntry> entries;
    std::vector<Listed> names;
    if (platform::ListFolder(folder, entries))
        return names;
    for (auto& entry : entries)
        if (!IsStagedName(entry.name) && wanted(entry))
            names.push_back({entry.name, UpperCase(entry.name)});
    std::sort(names.begin(), names.end(), [](const Listed& a, const Listed& b) {
        return a.key != b.key ? a.key < b.key : a.name < b.name;
    });
    return names;
}

std::vector<Path> FullPaths(const Path& folder, const std::vector<Listed>& names)
{
    std::vector<Path> paths;
    paths.reserve(names.size());
    for (const Listed& entry : names)
        paths.push_back(folder / entry.name);
    return paths;
}

bool IsFileOf(const Path& folder, const platform::FolderEntry& entry, const Path& root)
{
    return entry.kind == FileKind::File ||
           (entry.kind == FileKind::Link && StaysInside(folder / entry.name, root));
}

std::vector<Path> FilesOf(const Path& folder, std::string_view pattern, const Path& root)
{
    return FullPaths(folder, SortedNames(folder, [&](const platform::FolderEntry& entry) {
                         return MatchesPattern(entry.name, pattern) &&
                                IsFileOf(folder, entry, root);
                     }));
}

} // namespace

Path ResolvePath(const Path& path)
{
    if (path.empty() || platform::FactsOfLink(path).kind != FileKind::Missing)
        return path;
    if (!path.has_filename() || path.filename() == "..") // a trailing separator, or the way up
        return path.has_parent_path() && path.parent_path() != path
                   ? ResolvePath(path.parent_path()) / path.filename()
                   : path;
    const Path parent = path.has_parent_path() ? ResolvePath(path.parent_path()) : Path{"."};
    const std::string spelling = SpellingIn(parent, path.filename().native());
    const Path name = spelling.empty() ? path.filename() : Path{spelling};
    return path.has_parent_path() ? parent / name : name;
}

std::vector<Path> CaseTwins(const Path& path)
{
    const Path folder = ResolvePath(path.parent_path());
    const std::string name = path.filename().native();
    return FullPaths(folder, SortedNames(folder.empty() ? Path{"."} : folder,
                                         [&](const platform::FolderEntry& entry) {
                                             return EqualNames(entry.name, name);
                                         }));
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
    const Path place = ResolvePath(folder);
    if (platform::FactsOf(place).kind == FileKind::Folder)
        return {};
    if (const auto failure = platform::MakeFolder(place))
        return MakeFailure(ErrorCode::CannotWrite, TextOf(place), failure);
    return {};
}

Status MakeFolders(const Path& folder)
{
    const Path place = ResolvePath(folder);
    if (const auto failure = platform::MakeFolders(place))
        return MakeFailure(ErrorCode::CannotWrite, TextOf(place), failure);
    return {};
}

std::vector<Path> ListFiles(const Path& folder, std::string_view pattern)
{
    const Path place = ResolvePath(folder);
    return FilesOf(place, pattern, place);
}

std::vector<Path> ListSubfolders(const Path& folder)
{
    const Path place = ResolvePath(folder);
    return FullPaths(place, SortedNames(place, [](const platform::FolderEntry& entry) {
                         return entry.kind == FileKind::Folder;
                     }));
}

bool AnyFile(const Path& folder, std::string_view pattern)
{
    return !ListFiles(folder, pattern).empty();
}

Result<Tree> ScanTree(const Path& folder, const Heartbeat& heartbeat)
{
    const Path root = ResolvePath(folder);
    Tree tree;
    if (platform::FactsOf(root).kind != FileKind::Folder)
        return MakeFailure(ErrorCode::Missing, TextOf(root));
    tree.folders.push_back(root);
    for (std::size_t i = 0; i < tree.folders.size(); ++i) {
        const Path current = tree.folders[i];
        if (heartbeat && !heartbeat())
            return MakeFailure(ErrorCode::Stopped, TextOf(current));
        std::vector<platform::FolderEntry> probe;
        if (const auto failure = platform::ListFolder(current, probe))
            return MakeFailure(ErrorCode::CannotRead, TextOf(current), failure);
        for (Path& file : FilesOf(current, "*", root))
            tree.files.push_back(std::move(file));
        for (Path& child : ListSubfolders(current))
            tree.folders.push_back(std::move(child));
    }
    return tree;
}

double FolderSize(const Path& folder, std::string_view pattern)
{
    const auto tree = ScanTree(folder);
    double sum = 0;
    if (tree)
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
    for (const Path& twin : CaseTwins(file))
        if (const auto failure = platform::Unlink(twin);
            failure && failure != std::errc::no_such_file_or_directory)
            return MakeFailure(ErrorCode::CannotDelete, TextOf(twin), failure);
    return {};
}

Status CanList(const Path& folder)
{
    const Path place = ResolvePath(folder);
    std::vector<platform::FolderEntry> entries;
    const auto failure = platform::ListFolder(place, entries);
    if (failure && failure != std::errc::no_such_file_or_directory)
        return MakeFailure(ErrorCode::CannotRead, TextOf(place), failure);
    return {};
}

Status DeleteMatching(const Path& folder, std::string_view pattern)
{
    const Path place = ResolvePath(folder);
    if (auto status = CanList(place); !status)
        return status;
    // A device or a pipe is nothing that this program ever made.
    const auto names = SortedNames(place, [&](const platform::FolderEntry& entry) {
        return (entry.kind == FileKind::File || entry.kind == FileKind::Link) &&
               MatchesPattern(entry.name, pattern);
    });
    for (const Path& file : FullPaths(place, names))
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

Status RemoveTree(const Path& folder, const Heartbeat& heartbeat)
{
    const Path place = ResolvePath(folder);
    if (heartbeat && !heartbeat())
        return MakeFailure(ErrorCode::Stopped, TextOf(place));
    if (platform::FactsOfLink(place).kind == FileKind::Link) {
        if (const auto failure = platform::Unlink(place))
            return MakeFailure(ErrorCode::CannotDelete, TextOf(place), failure);
        return {};
    }
    std::vector<platform::FolderEntry> entries;
    if (const auto failure = platform::ListFolder(place, entries))
        return MakeFailure(ErrorCode::CannotDelete, TextOf(place), failure);
    for (const auto& entry : entries) {
        const Path path = place / entry.name;
        if (entry.kind == FileKind::Folder) {
            if (auto status = RemoveTree(path, heartbeat); !status)
                return status;
        } else if (entry.kind == FileKind::Other) {
            return MakeFailure(ErrorCode::CannotDelete, TextOf(path),
                               std::make_error_code(std::errc::operation_not_permitted));
        } else if (const auto failure = platform::Unlink(path)) {
            return MakeFailure(ErrorCode::CannotDelete, TextOf(path), failure);
        }
    }
    if (const auto failure = platform::RemoveFolder(place))
        return MakeFailure(ErrorCode::CannotDelete, TextOf(place), failure);
    return {};
}

bool SameContent(const Path& a, const Path& b, const Heartbeat& heartbeat)
{
    platform::File first;
    platform::File second;
    if (platform::File::OpenForRead(ResolvePath(a), first) ||
        platform::File::OpenForRead(ResolvePath(b), second))
        return false;
    if (first.Facts().size != second.Facts().size)
        return false;
    // Two buffers that stay in a core's own cache.
    constexpr std::size_t most = std::size_t{1} << 17;
    std::vector<std::byte> left(std::min(platform::BufferSize(first.Facts().size), most));
    std::vector<std::byte> right(left.size());
    const auto fill = [](platform::File& file, std::span<std::byte> into, std::size_t& got) {
        got = 0;
        for (std::size_t count = 1; count > 0 && got < into.size(); got += count)
            if (file.Read(into.subspan(got), count))
                return false;
        return true;
    };
    for (;;) {
        std::size_t leftGot = 0;
        std::size_t rightGot = 0;
        if (!fill(first, left, leftGot) || !fill(second, right, rightGot) || leftGot != rightGot ||
            std::memcmp(left.data(), right.data(), leftGot) != 0)
            return false;
        if (leftGot < left.size())
            return true;
        if (heartbeat && !heartbeat())
            return false;
    }
}

Result<std::string> ReadWholeFile(const Path& file, std::uint64_t limit)
{
    std::string content;
    const Path place = ResolvePath(file);
    if (const auto failure = platform::ReadAll(place, content, limit))
        return MakeFailure(ErrorCode::CannotRead, TextOf(place), failure);
    return content;
}

std::string FormatSize(double bytes)
{
    constexpr double kilo = 1024;
    constexpr double mega = kilo * 1024;
    constexpr double giga = mega * 1024;
    // The mask "###.0": one decimal, no zero before a bare decimal point.
    const auto oneDecimal = [](double value) {
        std::string text = fmt::format("{:.1f}", value);
        return text.starts_with("0.") ? text.substr(1) : text;
    };
    if (bytes > giga)
        return oneDecimal(bytes / giga) + GetMsg(Msg::SizeGb);
    if (bytes > mega)
        return oneDecimal(bytes / mega) + GetMsg(Msg::SizeMb);
    if (bytes > kilo)
        return fmt::format("{}", static_cast<std::int64_t>(std::nearbyint(bytes)) / 1024) +
               GetMsg(Msg::SizeKb);
    return fmt::format("{:.0f}", bytes);
}

} // namespace kestrova
