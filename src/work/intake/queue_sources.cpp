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
        std::vector<Path> levels;
        std::copy_if(files->begin(), files->end(), std::back_inserter(levels),
                     [](const Path& file) { return IsPackage(file) || IsSetupProgram(file); });
        std::copy_if(folders->begin(), folders->end(), std::back_inserter(levels),
                     [&](const Path& each) {
                         return HasLevelFilesBelow(each, deepestLevelFiles, heartbeat_);
                     });
        std::sort(levels.begin(), levels.end(), [](const Path& a, const Path& b) {
            return FoldCase(a.filename().native()) < FoldCase(b.filename().native());
        });
        for (const Path& level : levels)
            Add(level);
        if (levels.empty())
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
