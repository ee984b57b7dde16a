#include "packages/unpack_guard.h"

#include "core/size_words.h"
#include "core/text.h"
#include "words/packages.h"

#include <algorithm>
#include <limits>

namespace kestrova
{

namespace
{

using Clock = std::chrono::steady_clock;

/// What a folder takes of the disk at least.
constexpr std::uint64_t blockOfFolder = 4096;

/// Everything below the folder, hidden names and unfinished files too. Looks no further than to
/// `enough`.
Amount AmountIn(const Path& folder, const Amount& enough)
{
    struct Place {
        Path folder;
        std::size_t depth = 0;
    };
    Amount amount;
    std::vector<Place> folders{{folder, 0}};
    while (!folders.empty() && amount.bytes <= enough.bytes && amount.entries <= enough.entries &&
           amount.depth <= enough.depth) {
        const Place place = std::move(folders.back());
        folders.pop_back();
        std::vector<platform::FolderEntry> entries;
        if (platform::ListFolder(place.folder, entries))
            continue; // gone again, or not there yet
        amount.entries += entries.size();
        if (!entries.empty())
            amount.depth = std::max(amount.depth, place.depth + 1);
        for (const platform::FolderEntry& entry : entries) {
            Path path = place.folder / entry.name;
            if (entry.kind == platform::FileKind::Folder) {
                amount.bytes += blockOfFolder;
                folders.push_back({std::move(path), place.depth + 1});
            } else {
                amount.bytes += platform::FactsOfLink(path).size;
            }
        }
    }
    return amount;
}

constexpr Amount anything{std::numeric_limits<std::uint64_t>::max(),
                          std::numeric_limits<std::uint64_t>::max(),
                          std::numeric_limits<std::size_t>::max()};

/// A backslash may be the second byte of a letter, so it ends a part but makes nothing deeper:
/// where a tool makes a folder of it, that is met while it comes out.
struct NameShape {
    std::size_t longestPart = 0;
    std::size_t depth = 0; ///< parts between slashes
};

NameShape ShapeOf(std::string_view name)
{
    NameShape shape;
    bool inPart = false;
    std::size_t length = 0;
    for (const char c : name) {
        length = c == '/' || c == '\\' ? 0 : length + 1;
        shape.longestPart = std::max(shape.longestPart, length);
        shape.depth += c != '/' && !inPart ? 1 : 0;
        inPart = c != '/';
    }
    return shape;
}

/// The beginning of a name, fit to be shown.
std::string ShownName(std::string_view name)
{
    constexpr std::size_t most = 60;
    std::string shown = Readable(name);
    std::replace_if(shown.begin(), shown.end(), IsControl, '_');
    if (shown.size() <= most)
        return shown;
    return CutAtLetter(std::move(shown), most) + GetMsg(Msg::NameGoesOn);
}

bool IsFolderName(std::string_view name)
{
    return name.ends_with('/');
}

std::uint64_t Times(std::uint64_t bytes, std::uint64_t factor)
{
    constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
    return factor != 0 && bytes > most / factor ? most : bytes * factor;
}

std::uint64_t Sum(std::uint64_t a, std::uint64_t b)
{
    return a + std::min(b, ~a);
}

std::string SizeText(std::uint64_t bytes)
{
    return SizeInWords(static_cast<double>(bytes));
}

} // namespace

UnpackGuard::UnpackGuard(Machine& machine, const Path& package, const Path& folder,
                         const UnpackLimits& limits)
    : machine_(machine), package_(package), folder_(ResolvePath(folder)), limits_(limits),
      mostBytes_(std::max(limits.alwaysAllowed, Times(FileSize(package), limits.mostTimes))),
      before_(AmountIn(folder_, anything))
{
    constexpr std::uint64_t share = 4;
    if (const auto free = machine.FreeSpace(folder_))
        keepFree_ = std::min(limits.keepFree, *free / share);
}

std::string UnpackGuard::TooBig(std::uint64_t bytes) const
{
    return GetMsg(Msg::UnpackTooBig,
                  {PackageName(), SizeText(FileSize(package_)), SizeText(bytes)});
}

std::string UnpackGuard::NoRoom(std::uint64_t needed) const
{
    lacksRoom_ = true;
    return GetMsg(Msg::UnpackNoRoom, {PackageName(), SizeText(needed), TextOf(folder_)});
}

std::string UnpackGuard::BadName(const std::vector<PackageEntry>& entries) const
{
    for (const PackageEntry& entry : entries) {
        const NameShape shape = ShapeOf(entry.name);
        if (shape.depth > limits_.deepest)
            return GetMsg(Msg::UnpackTooDeep, {PackageName(), std::to_string(shape.depth)});
        if (shape.longestPart > limits_.longestName || entry.name.size() > limits_.longestPath)
            return GetMsg(Msg::UnpackNameTooLong, {PackageName(), ShownName(entry.name)});
    }
    return {};
}

std::string UnpackGuard::Refuses(const std::vector<PackageEntry>& entries) const
{
    if (entries.size() > limits_.mostFiles)
        return GetMsg(Msg::UnpackTooManyFiles, {PackageName(), std::to_string(entries.size())});
    if (std::string words = BadName(entries); !words.empty())
        return words;
    std::uint64_t promised = 0;
    for (const PackageEntry& entry : entries) {
        if (entry.size > mostBytes_ || promised > mostBytes_)
            return TooBig(std::max(entry.size, promised));
        promised += entry.size + (IsFolderName(entry.name) ? blockOfFolder : 0);
    }
    if (promised > mostBytes_)
        return TooBig(promised);
    // What cannot be found out shows soon enough.
    if (const auto free = machine_.FreeSpace(folder_);
        free && (*free < keepFree_ || *free - keepFree_ < promised))
        return NoRoom(promised + keepFree_);
    return {};
}

std::string UnpackGuard::Watch()
{
    if (const auto free = machine_.FreeSpace(folder_); free && *free < keepFree_)
        return NoRoom(keepFree_);
    const Clock::time_point start = Clock::now();
    if (start < nextLook_)
        return {};
    std::string words = Look();
    // A folder of many files is looked at less often, so that looking stays a small part of it all.
    constexpr std::chrono::milliseconds pause{100};
    constexpr int share = 10;
    const Clock::time_point end = Clock::now();
    nextLook_ = end + std::max<Clock::duration>(pause, (end - start) * share);
    return words;
}

std::string UnpackGuard::Look()
{
    // The folder that a package is unpacked in, inside the one that is watched, is none of its own.
    constexpr std::size_t staging = 1;
    const Amount most{Sum(before_.entries, limits_.mostFiles + staging),
                      Sum(before_.bytes, Sum(mostBytes_, blockOfFolder)),
                      std::max(before_.depth, limits_.deepest + staging)};
    const Amount now = AmountIn(folder_, most);
    came_.entries = std::max(came_.entries, now.entries - std::min(before_.entries, now.entries));
    came_.bytes = std::max(came_.bytes, now.bytes - std::min(before_.bytes, now.bytes));
    if (now.bytes > most.bytes)
        return TooBig(now.bytes - before_.bytes);
    if (now.entries > most.entries)
        return GetMsg(Msg::UnpackTooManyCame, {PackageName(), std::to_string(limits_.mostFiles)});
    if (now.depth > most.depth)
        return GetMsg(Msg::UnpackTooDeep, {PackageName(), std::to_string(now.depth)});
    return {};
}

} // namespace kestrova
