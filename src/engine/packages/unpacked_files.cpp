#include "packages/unpacked_files.h"

#include "core/copying.h"
#include "core/removal.h"
#include "core/staged_file.h"
#include "core/text.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace kestrova
{

namespace
{

using platform::FileKind;

bool IsUnsafe(char c)
{
    return c == ':' || c == '\\';
}

std::string SafeNameFor(const std::string& name)
{
    std::string safe = ListableName(name);
    std::replace_if(safe.begin(), safe.end(), IsUnsafe, '_');
    if (safe.starts_with(stagedPrefix))
        safe.front() = '_';
    return safe;
}

/// What a file system takes as one name.
constexpr std::size_t longestName = 255;

/// The name with `tail` ahead of its ending, short enough for a file.
std::string WithTail(const Path& name, const std::string& tail)
{
    constexpr std::size_t longestEnding = 32;
    std::string ending = name.extension().native();
    std::string stem = name.stem().native();
    if (ending.size() > longestEnding)
        stem += std::exchange(ending, {});
    return CutAtLetter(std::move(stem), longestName - tail.size() - ending.size()) + tail + ending;
}

/// Gives out names that are free in one folder, and looks at none of them twice.
class FreeNames
{
public:
    enum class Case { Counts, Ignored };
    explicit FreeNames(Case cases) : case_(cases) {}

    void Add(const std::string& name) { taken_.insert(KeyOf(name)); }
    /// The name itself or, when it is taken, one with the next free number. It is taken then.
    std::string Take(const std::string& name)
    {
        std::string free = WithTail(name, {});
        if (taken_.insert(KeyOf(free)).second)
            return free;
        int& number = numbers_.try_emplace(KeyOf(free), 1).first->second;
        do
            free = WithTail(name, "_" + std::to_string(++number));
        while (!taken_.insert(KeyOf(free)).second);
        return free;
    }

private:
    [[nodiscard]] std::string KeyOf(const std::string& name) const
    {
        return case_ == Case::Ignored ? FoldCase(name) : name;
    }
    Case case_;
    std::unordered_set<std::string> taken_;
    std::unordered_map<std::string, int> numbers_;
};

/// A name as the lists and the disk both have it.
std::string Key(std::string_view name)
{
    std::string key = FoldCase(Readable(name));
    std::replace(key.begin(), key.end(), '\\', '/');
    return key;
}

std::string_view LastPart(std::string_view key)
{
    return key.substr(key.rfind('/') + 1); // npos + 1 is the beginning
}

/// A folder that files are moved into, its names read once.
class Target
{
public:
    explicit Target(Path folder) : folder_(std::move(folder))
    {
        std::vector<platform::FolderEntry> entries;
        if (const auto failure = platform::ListFolder(folder_, entries))
            state_ = MakeFailure(ErrorCode::CannotRead, TextOf(folder_), failure);
        for (platform::FolderEntry& entry : entries)
            names_.emplace(FoldCase(entry.name), std::move(entry));
    }

    /// A failure when its names could not be read; nothing may be moved there then.
    [[nodiscard]] const Status& State() const { return state_; }

    [[nodiscard]] Path PlaceForFile(const std::string& name)
    {
        const std::string free = placed_.Take(name);
        const auto known = names_.find(FoldCase(free));
        return folder_ / (known == names_.end() ? free : known->second.name);
    }

    Result<Path> Subfolder(const std::string& name)
    {
        const auto known = names_.find(FoldCase(name));
        if (known != names_.end() && known->second.kind == FileKind::Folder)
            return folder_ / known->second.name;
        // Never through a link, and a file of that name stays.
        const Path made = folder_ / (known == names_.end() ? name : FreeName(name));
        if (const auto failure = platform::MakeFolder(made))
            return MakeFailure(ErrorCode::CannotWrite, TextOf(made), failure);
        names_[FoldCase(name)] = {made.filename().native(), FileKind::Folder};
        return made;
    }

private:
    [[nodiscard]] std::string FreeName(const std::string& name) const
    {
        std::string free = name;
        for (int i = 2; names_.contains(FoldCase(free)); ++i)
            free = WithTail(name, "_" + std::to_string(i));
        return free;
    }

    Path folder_;
    Status state_;
    std::unordered_map<std::string, platform::FolderEntry> names_;
    FreeNames placed_{FreeNames::Case::Ignored};
};

/// The files below a folder, as relative paths.
Result<std::vector<Path>> FilesBelow(const Path& top)
{
    std::vector<Path> files;
    std::vector<Path> folders{{}};
    while (!folders.empty()) {
        const Path place = std::move(folders.back());
        folders.pop_back();
        std::vector<platform::FolderEntry> entries;
        if (const auto failure = platform::ListFolder(top / place, entries))
            return MakeFailure(ErrorCode::CannotRead, TextOf(top / place), failure);
        for (const platform::FolderEntry& entry : entries)
            (entry.kind == FileKind::Folder ? folders : files).push_back(place / entry.name);
    }
    return files;
}

/// The later in the package comes first, since it keeps its name.
void SortByPackage(std::vector<Path>& files, const std::vector<PackageEntry>& entries)
{
    std::unordered_map<std::string, std::size_t> places;
    for (std::size_t i = 0; i < entries.size(); ++i)
        places[Readable(entries[i].name)] = i + 1;
    const auto placeOf = [&](const Path& file) {
        const auto found = places.find(file.native());
        return found == places.end() ? 0 : found->second;
    };
    std::sort(files.begin(), files.end(), [&](const Path& a, const Path& b) {
        const std::size_t placeA = placeOf(a);
        const std::size_t placeB = placeOf(b);
        return placeA != placeB ? placeA > placeB : a < b;
    });
}

} // namespace

namespace
{

constexpr std::uint32_t folderRights = 0755;
constexpr std::size_t entriesAStep = 64;

/// The entries of one folder; what lies deeper comes to `folders`.
bool MakeEntriesPlain(const Path& place, std::vector<Path>& folders, const Heartbeat& heartbeat)
{
    std::vector<platform::FolderEntry> entries;
    // What cannot be mended here shows when the file is used; nothing is lost by going on.
    (void)platform::ListFolder(place, entries);
    FreeNames names{FreeNames::Case::Counts};
    for (const platform::FolderEntry& entry : entries)
        names.Add(entry.name);
    std::size_t seen = 0;
    for (const platform::FolderEntry& entry : entries) {
        if (++seen % entriesAStep == 0 && heartbeat && !heartbeat())
            return false;
        Path path = place / entry.name;
        if (entry.kind != FileKind::File && entry.kind != FileKind::Folder) {
            (void)platform::Unlink(path);
            continue;
        }
        const bool isFolder = entry.kind == FileKind::Folder;
        const std::uint32_t wanted = isFolder ? folderRights : plainRights;
        if (platform::FactsOfLink(path).mode != wanted)
            (void)platform::SetMode(path, wanted);
        if (const std::string safe = SafeNameFor(entry.name); safe != entry.name) {
            const Path free = place / names.Take(safe);
            if (!platform::Rename(path, free))
                path = free;
        }
        if (isFolder)
            folders.push_back(std::move(path));
    }
    return true;
}

} // namespace

bool MakePlain(const Path& folder, const Heartbeat& heartbeat)
{
    if (platform::FactsOfLink(folder).mode != folderRights)
        (void)platform::SetMode(folder, folderRights);
    std::vector<Path> folders{folder};
    while (!folders.empty()) {
        const Path place = std::move(folders.back());
        folders.pop_back();
        if ((heartbeat && !heartbeat()) || !MakeEntriesPlain(place, folders, heartbeat))
            return false;
    }
    return true;
}

bool CollideWhenFlat(const std::vector<PackageEntry>& entries)
{
    std::unordered_set<std::string> names;
    for (const PackageEntry& entry : entries) {
        const std::string key = Key(entry.name);
        const std::string_view name = LastPart(key);
        if (!name.empty() && !names.emplace(name).second)
            return true;
    }
    return false;
}

Result<std::vector<RenamedFile>> PlaceUnpacked(const Path& staging, const Path& folder, bool flat,
                                               const std::vector<PackageEntry>& entries,
                                               ProgressScope* progress)
{
    constexpr std::size_t filesAStep = 64;
    auto listed = FilesBelow(staging);
    if (!listed)
        return listed.Error();
    std::vector<Path>& files = *listed;
    SortByPackage(files, entries);
    std::unordered_map<std::string, Target> targets;
    const auto targetOf = [&](const Path& place) -> Target& {
        return targets.try_emplace(place.native(), place).first->second;
    };
    std::vector<RenamedFile> renamed;
    std::size_t moved = 0;
    Path parent;
    Path place = folder;
    for (const Path& file : files) {
        // Moved to the end, whatever Stop says: it is all there.
        if (progress != nullptr && ++moved % filesAStep == 0)
            (void)progress->Step();
        if (const Path above = flat ? Path{} : file.parent_path(); above != parent) {
            place = folder;
            for (const Path& part : above) {
                if (const Status& state = targetOf(place).State(); !state)
                    return state.Error();
                auto sub = targetOf(place).Subfolder(part.native());
                if (!sub)
                    return sub.Error();
                place = *sub;
            }
            parent = above;
        }
        Target& last = targetOf(place);
        if (!last.State())
            return last.State().Error();
        const Path target = last.PlaceForFile(file.filename().native());
        if (const auto failure = platform::Rename(staging / file, target))
            return MakeFailure(ErrorCode::CannotWrite, TextOf(target), failure);
        if (!EqualNames(target.filename().native(), file.filename().native()))
            renamed.push_back({TextOf(file), TextOf(target.filename())});
    }
    return renamed;
}

} // namespace kestrova
