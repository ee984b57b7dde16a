#include "platform/folder_memory.h"

#include "platform/files.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <mutex>
#include <unordered_map>

namespace kestrova::platform
{

namespace
{

using Clock = std::chrono::steady_clock;

/// A change by another program in the very moment of one of ours goes unseen no longer than this.
constexpr std::chrono::seconds longestMemory{2};

struct KnownFolder {
    Clock::time_point listed;
    FileFacts facts; ///< of the folder, after the last change that is kept up with
    NameKey key = nullptr;
    std::unordered_map<std::string, std::vector<std::string>> names; ///< by key

    void Set(const std::string& name, bool isThere)
    {
        std::vector<std::string>& alike = names[key(name)];
        const auto place = std::lower_bound(alike.begin(), alike.end(), name);
        const bool known = place != alike.end() && *place == name;
        if (isThere && !known)
            alike.insert(place, name);
        else if (!isThere && known)
            alike.erase(place);
    }
};

std::atomic<int> standing{0};
std::atomic<std::uint64_t> changes{0}; ///< that this program made
std::mutex guard;                      ///< of `known`
std::unordered_map<std::string, KnownFolder> known;

bool IsUnchanged(const KnownFolder& folder, const FileFacts& facts)
{
    return facts.kind == FileKind::Folder && folder.facts.inode == facts.inode &&
           folder.facts.device == facts.device && folder.facts.modifiedNs == facts.modifiedNs &&
           folder.facts.changedNs == facts.changedNs;
}

/// What a listing tells. Times are looked at before it: what comes in between is seen as a change.
KnownFolder Learn(const FileFacts& facts, NameKey key, const std::vector<FolderEntry>& entries)
{
    KnownFolder learned{Clock::now(), facts, key, {}};
    for (const FolderEntry& entry : entries)
        learned.Set(entry.name, true);
    return learned;
}

std::vector<std::string> Alike(const KnownFolder& folder, const std::string& key)
{
    const auto found = folder.names.find(key);
    return found == folder.names.end() ? std::vector<std::string>{} : found->second;
}

} // namespace

FolderMemory::FolderMemory()
{
    ++standing;
}

FolderMemory::~FolderMemory()
{
    const std::lock_guard lock{guard};
    if (--standing == 0)
        known.clear();
}

std::error_code NamesLike(const Path& folder, std::string_view name, NameKey key,
                          std::vector<std::string>& names)
{
    const std::string wanted = key(name);
    if (standing > 0) {
        const std::lock_guard lock{guard};
        const auto place = known.find(folder.native());
        if (place != known.end() && Clock::now() - place->second.listed < longestMemory &&
            IsUnchanged(place->second, FactsOf(folder))) {
            names = Alike(place->second, wanted);
            return {};
        }
    }
    names.clear();
    const std::uint64_t before = changes;
    const FileFacts facts = FactsOf(folder);
    std::vector<FolderEntry> entries;
    if (const auto failure = ListFolder(folder, entries))
        return failure;
    for (const FolderEntry& entry : entries)
        if (key(entry.name) == wanted)
            names.push_back(entry.name);
    std::sort(names.begin(), names.end());
    if (standing > 0) {
        KnownFolder learned = Learn(facts, key, entries);
        const std::lock_guard lock{guard};
        if (changes == before) // a change by another thread may be missing in the listing
            known[folder.native()] = std::move(learned);
    }
    return {};
}

void NoteName(const Path& file, bool isThere)
{
    if (standing == 0)
        return;
    const std::lock_guard lock{guard};
    ++changes;
    const Path folder = file.parent_path();
    const auto place = known.find(folder.native());
    if (place == known.end())
        return;
    place->second.Set(file.filename().native(), isThere);
    place->second.facts = FactsOf(folder);
}

void ForgetTree(const Path& root)
{
    if (standing == 0)
        return;
    const std::lock_guard lock{guard};
    ++changes;
    known.erase(root.parent_path().native());
    const std::string below = root.native() + "/";
    std::erase_if(known, [&](const auto& folder) {
        return folder.first == root.native() || folder.first.starts_with(below);
    });
}

} // namespace kestrova::platform
