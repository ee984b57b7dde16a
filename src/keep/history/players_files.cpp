#include "history/players_files.h"

#include "core/files.h"
#include "core/text.h"
#include "formats/trle_folder.h"
#include "platform/file_content.h"

namespace kestrova
{

std::vector<std::string> StatePatterns()
{
    return Split(OnDisk::StatePatterns, '|');
}

Result<std::vector<Path>> StateFilesIn(const Path& folder)
{
    std::vector<Path> files;
    for (const std::string& pattern : StatePatterns()) {
        const auto found = ListFiles(folder, pattern);
        if (!found)
            return found.Error();
        files.insert(files.end(), found->begin(), found->end());
    }
    return files;
}

bool IsPlayersFile(std::string_view name)
{
    return MatchesPattern(name, OnDisk::SavegamePattern) ||
           MatchesPattern(name, OnDisk::NotePattern) || MatchesPattern(name, OnDisk::ShotPattern);
}

bool IsPlayersPlace(const Path& relative)
{
    return !relative.has_parent_path() && IsPlayersFile(relative.native());
}

Result<std::vector<StateFile>> HashesOf(const std::vector<Path>& files)
{
    std::vector<StateFile> result;
    for (const Path& file : files) {
        StateFile entry{file.filename().native(), {}};
        if (const auto failure = platform::HashOfFile(file, entry.hash))
            return MakeFailure(ErrorCode::CannotRead, TextOf(file), failure);
        result.push_back(std::move(entry));
    }
    return result;
}

} // namespace kestrova
