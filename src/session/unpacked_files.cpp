#include "session/unpacked_files.h"

#include "core/text.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace kestrova
{

namespace
{

using platform::FileKind;

bool IsUnsafe(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    return byte < ' ' || byte == 0x7F || c == ':' || c == '\\';
}

std::string SafeNameFor(const std::string& name)
{
    std::string safe = Readable(name);
    std::replace_if(safe.begin(), safe.end(), IsUnsafe, '_');
    if (safe.starts_with(stagedPrefix))
        safe.front() = '_';
    return safe;
}

std::string Numbered(const Path& name, int number)
{
    return name.stem().native() + "_" + std::to_string(number) + name.extension().native();
}

/// The name, or the nearest free one.
Path FreePath(const Path& folder, const std::string& name)
{
    Path free = folder / name;
    for (int i = 2; platform::FactsOfLink(free).kind != FileKind::Missing; ++i)
        free = folder / Numbered(name, i);
    return free;
}

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
        (void)platform::ListFolder(folder_, entries); // what cannot be read fails at the first move
        for (platform::FolderEntry& entry : entries)
            names_.emplace(FoldCase(entry.name), std::move(entry));
    }

    [[nodiscard]] Path PlaceForFile(const std::string& name)
    {
        std::string free = name;
        for (int i = 2; placed_.contains(FoldCase(free)); ++i)
            free = Numbered(name, i);
        placed_.insert(FoldCase(free));
        const auto known = names_.find(FoldCase(free));
        return folder_ / (known == names_.end() ? free : known->second.name);
    }

    Result<Path> Subfolder(const std::string& name)
    {
        const auto known = names_.find(FoldCase(name));
        if (known != names_.end() && known->second.kind == FileKind::Folder)
            return folder_ / known->second.name;
        // Never through a link, and a file of that name stays.
        const Path made = known == names_.end() ? folder_ / name : FreePath(folder_, name);
        if (const auto failure = platform::MakeFolder(made))
            return MakeFailure(ErrorCode::CannotWrite, TextOf(made), failure);
        names_[FoldCase(name)] = {made.filename().native(), FileKind::Folder};
        return made;
    }

private:
    Path folder_;
    std::unordered_map<std::string, platform::FolderEntry> names_;
    std::unordered_set<std::string> placed_; ///< folded
};

/// The files below a folder, as relative paths.
std::vector<Path> FilesBelow(const Path& top)
{
    std::vector<Path> files;
    std::vector<Path> folders{{}};
    while (!folders.empty()) {
        const Path place = std::move(folders.back());
        folders.pop_back();
        std::vector<platform::FolderEntry> entries;
        (void)platform::ListFolder(top / place, entries); // `RemoveTree` will fail on what is shut
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

void MakePlain(const Path& folder, ProgressScope* progress)
{
    constexpr std::uint32_t ownerAll = 0700;
    constexpr std::uint32_t ownerReadWrite = 0600;
    std::vector<Path> folders{folder};
    while (!folders.empty()) {
        const Path place = std::move(folders.back());
        folders.pop_back();
        std::vector<platform::FolderEntry> entries;
        // What cannot be mended here shows when the file is used; nothing is lost by going on.
        (void)platform::ListFolder(place, entries);
        for (const platform::FolderEntry& entry : entries) {
            // Mended to the end, whatever Stop says: what lies there is not to be trusted yet.
            if (progress != nullptr)
                (void)progress->Step();
            Path path = place / entry.name;
            if (entry.kind != FileKind::File && entry.kind != FileKind::Folder) {
                (void)platform::Unlink(path);
                continue;
            }
            const bool isFolder = entry.kind == FileKind::Folder;
            const std::uint32_t mode = platform::FactsOfLink(path).mode;
            const std::uint32_t wanted = mode | (isFolder ? ownerAll : ownerReadWrite);
            if (mode != wanted)
                (void)platform::SetMode(path, wanted & 0777);
            if (const std::string safe = SafeNameFor(entry.name); safe != entry.name) {
                const Path free = FreePath(place, safe);
                if (!platform::Rename(path, free))
                    path = free;
            }
            if (isFolder)
                folders.push_back(path);
        }
    }
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

Status PlaceUnpacked(const Path& staging, const Path& folder, bool flat,
                     const std::vector<PackageEntry>& entries, ProgressScope* progress)
{
    constexpr std::size_t filesAStep = 64;
    std::vector<Path> files = FilesBelow(staging);
    SortByPackage(files, entries);
    std::unordered_map<std::string, Target> targets;
    const auto targetOf = [&](const Path& place) -> Target& {
        return targets.try_emplace(place.native(), place).first->second;
    };
    std::size_t moved = 0;
    for (const Path& file : files) {
        // Moved to the end, whatever Stop says: it is all there.
        if (progress != nullptr && ++moved % filesAStep == 0)
            (void)progress->Step();
        Path place = folder;
        for (const Path& part : flat ? Path{} : file.parent_path()) {
            auto sub = targetOf(place).Subfolder(part.native());
            if (!sub)
                return sub.Error();
            place = *sub;
        }
        const Path target = targetOf(place).PlaceForFile(file.filename().native());
        if (const auto failure = platform::Rename(staging / file, target))
            return MakeFailure(ErrorCode::CannotWrite, TextOf(target), failure);
    }
    return RemoveTree(staging);
}

} // namespace kestrova
