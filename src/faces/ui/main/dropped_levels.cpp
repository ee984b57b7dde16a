#include "ui/main/dropped_levels.h"

#include "core/files.h"
#include "core/text.h"
#include "ui/desktop/file_names.h"

#include <algorithm>

namespace kestrova
{

std::vector<Path> LevelsAmong(std::vector<Path> paths)
{
    const std::vector<std::string> patterns = Split(OnDisk::PatternsNoLevel, '|');
    std::erase_if(paths, [&](const Path& path) {
        return std::any_of(patterns.begin(), patterns.end(), [&](const std::string& pattern) {
            return MatchesPattern(path.filename().native(), pattern) && !FolderExists(path);
        });
    });
    return paths;
}

} // namespace kestrova
