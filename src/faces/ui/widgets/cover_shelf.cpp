#include "ui/widgets/cover_shelf.h"

#include "platform/clock.h"
#include "platform/file_content.h"
#include "platform/process.h"
#include "ui/desktop/file_names.h"

#include <algorithm>
#include <atomic>
#include <vector>

namespace kestrova
{

namespace
{

/// No cover is nearly as large.
constexpr std::uint64_t coverBytes = 1U << 20;
constexpr std::int64_t dayNs = INT64_C(86'400'000'000'000);

struct Kept {
    Path file;
    platform::FileFacts facts;
};

/// What lies there under a name of ours; another's file is neither counted nor removed.
std::vector<Kept> KeptIn(const Path& folder)
{
    constexpr std::size_t digits = 32;
    std::vector<platform::FolderEntry> entries;
    (void)platform::ListFolder(folder, entries); // what cannot be listed is not counted
    std::vector<Kept> kept;
    for (const platform::FolderEntry& entry : entries)
        if (entry.kind == platform::FileKind::File &&
            entry.name.find_first_not_of("0123456789abcdef") == digits &&
            (entry.name.ends_with(OnDisk::CoverExtension) ||
             entry.name.find(OnDisk::CoverUnfinished) != std::string::npos))
            kept.push_back({folder / entry.name, platform::FactsOfLink(folder / entry.name)});
    return kept;
}

} // namespace

std::string CoverShelf::NameOf(const Path& file, const platform::FileFacts& facts)
{
    const std::string words =
        file.native() + '\n' + std::to_string(facts.size) + '\n' + std::to_string(facts.modifiedNs);
    return platform::HashOf(std::as_bytes(std::span(words))) + std::string{OnDisk::CoverExtension};
}

std::optional<std::string> CoverShelf::Find(const std::string& name)
{
    if (folder_.empty())
        return std::nullopt;
    const Path file = folder_ / name;
    const platform::FileFacts facts = platform::FactsOfLink(file);
    std::string bytes;
    if (facts.kind != platform::FileKind::File || platform::ReadAll(file, bytes, coverBytes))
        return std::nullopt;
    // Its time tells when it was of use; a day is close enough.
    if (const std::int64_t now = platform::NowNs(); now - facts.modifiedNs > dayNs)
        (void)platform::SetModified(file, now);
    return bytes;
}

void CoverShelf::Keep(const std::string& name, const std::string& bytes)
{
    const std::lock_guard lock{mutex_};
    if (folder_.empty() || closed_ || bytes.size() > coverBytes)
        return;
    if (!Write(name, bytes)) {
        closed_ = true;
        return;
    }
    if (bytes_)
        *bytes_ += bytes.size();
    if (!bytes_ || *bytes_ > mostBytes_)
        DropOldest();
}

bool CoverShelf::Write(const std::string& name, const std::string& bytes) const
{
    static std::atomic<unsigned> counter{0};
    if (platform::MakeFolders(folder_))
        return false;
    const Path file = folder_ / name;
    Path unfinished = file;
    unfinished += std::string{OnDisk::CoverUnfinished} + std::to_string(platform::OwnProcess()) +
                  '-' + std::to_string(++counter);
    platform::File out;
    if (platform::File::CreateNew(unfinished, out))
        return false;
    const bool written = !out.Write(std::as_bytes(std::span(bytes))) && !out.Close() &&
                         !platform::Rename(unfinished, file);
    if (!written)
        (void)platform::Unlink(unfinished); // it is counted, and goes as the oldest otherwise
    return written;
}

void CoverShelf::DropOldest()
{
    std::vector<Kept> kept = KeptIn(folder_);
    std::uint64_t sum = 0;
    for (const Kept& one : kept)
        sum += one.facts.size;
    if (sum > mostBytes_) {
        std::sort(kept.begin(), kept.end(), [](const Kept& a, const Kept& b) {
            return a.facts.modifiedNs < b.facts.modifiedNs;
        });
        // More than has to go, so that this is not done for every picture that comes.
        const std::uint64_t goal = mostBytes_ - mostBytes_ / 4;
        for (auto one = kept.begin(); one != kept.end() && sum > goal; ++one)
            if (!platform::Unlink(one->file))
                sum -= one->facts.size;
    }
    bytes_ = sum;
}

} // namespace kestrova
