#include "intake/queue_sources.h"

#include "core/file_kinds.h"
#include "core/look.h"
#include "core/text.h"
#include "formats/program_folder.h"
#include "intake/exe_install.h"
#include "intake/file_names.h"
#include "packages/package_tools.h"

#include <algorithm>
#include <set>

namespace kestrova
{

namespace
{

/// Levels keep their files in a folder or two of their own, no deeper.
constexpr int deepestLevelFiles = 3;

bool IsLevelFile(const Path& file)
{
    const std::vector<std::string> patterns = Split(OnDisk::LevelFilePatterns, '|');
    const std::string name = file.filename().native();
    return std::any_of(patterns.begin(), patterns.end(),
                       [&](const std::string& pattern) { return MatchesPattern(name, pattern); });
}

bool HasLevelFiles(const Path& folder)
{
    const auto files = ListFiles(folder, OnDisk::PatAll);
    return files && std::any_of(files->begin(), files->end(), IsLevelFile);
}

bool HasLevelFilesBelow(const Path& folder, int depth, const Heartbeat& heartbeat)
{
    if (heartbeat && !heartbeat())
        return false;
    if (HasLevelFiles(folder))
        return true;
    const auto folders = ListSubfolders(folder);
    return depth > 1 && folders &&
           std::any_of(folders->begin(), folders->end(), [&](const Path& each) {
               return HasLevelFilesBelow(each, depth - 1, heartbeat);
           });
}

std::size_t PackagesBelow(const Path& folder, int depth, const Heartbeat& heartbeat)
{
    const auto files = ListFiles(folder, OnDisk::PatAll);
    const auto folders = ListSubfolders(folder);
    if (!files || !folders || (heartbeat && !heartbeat()))
        return 0;
    auto count = static_cast<std::size_t>(std::count_if(files->begin(), files->end(), IsPackage));
    if (depth > 1)
        for (const Path& each : *folders)
            count += PackagesBelow(each, depth - 1, heartbeat);
    return count;
}

/// Links that are called like packages and lead out of the folder, or nowhere.
std::vector<Path> LinksToPackages(const Path& folder, const std::vector<Path>& listed)
{
    const std::set<Path> known(listed.begin(), listed.end());
    std::vector<platform::FolderEntry> entries;
    std::vector<Path> links;
    if (platform::ListFolder(folder, entries))
        return links;
    for (const platform::FolderEntry& entry : entries)
        if (const Path link = folder / entry.name;
            entry.kind == platform::FileKind::Link && IsPackage(link) && !known.contains(link))
            links.push_back(link);
    return links;
}

/// A level may come as a program; the person says whether it is one.
bool IsSetupProgram(const Path& file)
{
    return !FindSetupExe({file}).empty();
}

/// Gathers sources, each file and folder once.
class Gathering
{
public:
    explicit Gathering(const Heartbeat& heartbeat) : heartbeat_(heartbeat) {}

    void Take(const Path& given)
    {
        const auto facts = LookAt(given);
        if (!facts || facts->kind != platform::FileKind::Folder || IsLevelFolder(given))
            return Add(given);
        const auto files = ListFiles(given, OnDisk::PatAll);
        const auto folders = ListSubfolders(given);
        if (!files || !folders)
            return Add(given);
        std::vector<Path> levels = LinksToPackages(given, *files);
        std::copy_if(files->begin(), files->end(), std::back_inserter(levels),
                     [](const Path& file) { return IsPackage(file) || IsSetupProgram(file); });
        std::vector<QueueSource> others;
        for (const Path& each : *folders)
            if (HasLevelFilesBelow(each, deepestLevelFiles, heartbeat_))
                levels.push_back(each);
            else if (const auto count = PackagesBelow(each, deepestLevelFiles, heartbeat_))
                others.push_back({each, false, false, false, count});
        std::sort(levels.begin(), levels.end(), [](const Path& a, const Path& b) {
            return FoldCase(a.filename().native()) < FoldCase(b.filename().native());
        });
        for (const Path& level : levels)
            Add(level);
        sources_.insert(sources_.end(), others.begin(), others.end());
        if (levels.empty() && others.empty())
            sources_.push_back({given, true, false, false});
    }
    [[nodiscard]] std::vector<QueueSource> Taken() { return std::move(sources_); }

private:
    void Add(const Path& place)
    {
        const auto facts = LookAt(place);
        const bool isTwin = facts && facts->kind != platform::FileKind::Missing &&
                            !seen_.insert({facts->device, facts->inode}).second;
        sources_.push_back({place, false, IsArchiveFile(place), isTwin});
    }

    const Heartbeat& heartbeat_;
    std::vector<QueueSource> sources_;
    std::set<std::pair<std::uint64_t, std::uint64_t>> seen_;
};

} // namespace

bool IsArchiveFile(const Path& file)
{
    return EndsWithName(file.native(), OnDisk::ExtensionArchive) && FileExists(file);
}

bool IsLevelFolder(const Path& folder)
{
    return HasLevelFiles(folder) || HasLevelFiles(ResolvePath(folder / OnDisk::DirOfLevelData));
}

std::vector<QueueSource> SourcesOfLevels(const std::vector<Path>& given, const Heartbeat& heartbeat)
{
    Gathering gathering{heartbeat};
    for (const Path& each : given)
        gathering.Take(each);
    return gathering.Taken();
}

} // namespace kestrova
