#include "ui/main/dropped_levels.h"

#include "core/files.h"
#include "core/text.h"
#include "intake/queue_sources.h"
#include "packages/package_tools.h"
#include "session/operation.h"
#include "ui/desktop/file_names.h"
#include "ui/widgets/qt_text.h"
#include "words/add_many.h"
#include "words/library_window.h"

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

std::vector<Path> TakeArchives(std::vector<Path>& paths)
{
    const auto first = std::stable_partition(paths.begin(), paths.end(),
                                             [](const Path& path) { return !IsArchiveFile(path); });
    std::vector<Path> archives(first, paths.end());
    paths.erase(first, paths.end());
    return archives;
}

std::string NamesOf(const std::vector<Path>& paths)
{
    std::vector<std::string> names;
    for (const Path& path : paths)
        names.push_back(TextOf(path.filename()));
    return Join(names, ", ");
}

YesNoCancel AskForEach(Session& session, const std::vector<Path>& sources, std::size_t count)
{
    const Operation operation{session};
    // Loose files are parts of one level more often than not.
    const bool allWhole = std::all_of(sources.begin(), sources.end(), [](const Path& source) {
        return FolderExists(source) || IsPackage(source);
    });
    return session.host.AskEither(GetMsg(Msg::ManyAsk, {std::to_string(count)}), Msg::ManyAskEach,
                                  Msg::ManyAskOne, allWhole ? YesNoCancel::Yes : YesNoCancel::No);
}

QString WelcomeOf(const std::vector<Path>& paths)
{
    if (paths.empty())
        return {};
    return Words(paths.size() == 1 && IsArchiveFile(paths.front()) ? Msg::DropArchiveHere
                                                                   : Msg::DropLevelHere);
}

} // namespace kestrova
