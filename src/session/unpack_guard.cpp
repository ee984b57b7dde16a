#include "session/unpack_guard.h"

#include "catalogue/message.h"

#include <limits>

namespace kestrova
{

namespace
{

using Clock = std::chrono::steady_clock;

/// Everything below the folder, hidden names and unfinished files too. Looks no further than to
/// `enough`.
std::uint64_t BytesIn(const Path& folder, std::uint64_t enough)
{
    std::uint64_t bytes = 0;
    std::vector<Path> folders{folder};
    while (!folders.empty() && bytes <= enough) {
        const Path place = std::move(folders.back());
        folders.pop_back();
        std::vector<platform::FolderEntry> entries;
        if (platform::ListFolder(place, entries))
            continue; // gone again, or not there yet
        for (const platform::FolderEntry& entry : entries) {
            if (entry.kind == platform::FileKind::Folder)
                folders.push_back(place / entry.name);
            else
                bytes += platform::FactsOfLink(place / entry.name).size;
        }
    }
    return bytes;
}

std::uint64_t Times(std::uint64_t bytes, std::uint64_t factor)
{
    constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
    return factor != 0 && bytes > most / factor ? most : bytes * factor;
}

std::string SizeText(std::uint64_t bytes)
{
    return FormatSize(static_cast<double>(bytes));
}

} // namespace

UnpackGuard::UnpackGuard(Session& session, const Path& package, const Path& folder,
                         const UnpackLimits& limits)
    : session_(session), package_(package), folder_(ResolvePath(folder)),
      mostFiles_(limits.mostFiles),
      mostBytes_(std::max(limits.alwaysAllowed, Times(FileSize(package), limits.mostTimes))),
      before_(BytesIn(folder_, std::numeric_limits<std::uint64_t>::max()))
{
    constexpr std::uint64_t share = 4;
    if (const auto free = session.machine.FreeSpace(folder_))
        keepFree_ = std::min(limits.keepFree, *free / share);
}

std::string UnpackGuard::TooBig(std::uint64_t bytes) const
{
    return GetMsg(Msg::UnpackTooBig,
                  {TextOf(package_.filename()), SizeText(FileSize(package_)), SizeText(bytes)});
}

std::string UnpackGuard::NoRoom(std::uint64_t needed) const
{
    return GetMsg(Msg::UnpackNoRoom,
                  {TextOf(package_.filename()), SizeText(needed), TextOf(folder_)});
}

std::string UnpackGuard::Refuses(const std::vector<PackageEntry>& entries) const
{
    if (entries.size() > mostFiles_)
        return GetMsg(Msg::UnpackTooManyFiles,
                      {TextOf(package_.filename()), std::to_string(entries.size())});
    std::uint64_t promised = 0;
    for (const PackageEntry& entry : entries) {
        if (entry.size > mostBytes_ || promised > mostBytes_)
            return TooBig(std::max(entry.size, promised));
        promised += entry.size;
    }
    if (promised > mostBytes_)
        return TooBig(promised);
    // What cannot be found out shows soon enough.
    if (const auto free = session_.machine.FreeSpace(folder_);
        free && (*free < keepFree_ || *free - keepFree_ < promised))
        return NoRoom(promised + keepFree_);
    return {};
}

std::string UnpackGuard::Watch()
{
    if (const auto free = session_.machine.FreeSpace(folder_); free && *free < keepFree_)
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

std::string UnpackGuard::Look() const
{
    const std::uint64_t most = before_ + std::min(mostBytes_, ~before_);
    const std::uint64_t now = BytesIn(folder_, most);
    return now > most ? TooBig(now - before_) : std::string{};
}

} // namespace kestrova
