#include "levels/unfinished_intake.h"

#include "archive/level_folders.h"
#include "archive/set_aside.h"
#include "core/copying.h"
#include "core/leftovers.h"
#include "core/look.h"
#include "core/removal.h"
#include "core/staged_file.h"
#include "core/text.h"
#include "formats/level_folder.h"
#include "session/telling.h"
#include "words/levels.h"

#include <algorithm>

namespace kestrova
{

Path IntakeMark(const Path& levelFolder)
{
    return InFolder(levelFolder, OnDisk::FragIntakeMark);
}

Status DropIntakeMark(const Path& levelFolder)
{
    const Path mark = IntakeMark(ResolvePath(levelFolder));
    if (const auto failure = platform::Unlink(mark);
        failure && failure != std::errc::no_such_file_or_directory)
        return MakeFailure(ErrorCode::CannotDelete, TextOf(mark), failure);
    return FlushFolder(mark.parent_path());
}

Result<bool> IsUnfinishedIntake(const Folders& folders, const Archive& archive,
                                const Path& levelFolder)
{
    const bool listed =
        std::any_of(archive.levels.begin(), archive.levels.end(), [&](const LevelRecord& level) {
            return EqualNames(LevelHomeOf(folders, level.levelCode).filename().native(),
                              levelFolder.filename().native());
        });
    if (listed || !archive.Loaded())
        return false;
    return IsFile(IntakeMark(ResolvePath(levelFolder)));
}

Status ClearUnfinishedIntake(const Path& levelFolder)
{
    const Path folder = ResolvePath(levelFolder);
    NotePlace(folder.parent_path());
    const Path leaving = StagedNameFor(folder);
    if (const auto failure = platform::Rename(folder, leaving))
        return MakeFailure(ErrorCode::CannotDelete, TextOf(folder), failure);
    (void)RemoveTree(leaving); // its name is one that the next start clears
    return {};
}

std::vector<Path> UnfinishedIntakes(const Folders& folders, const Archive& archive)
{
    const auto found = FindUnknownFolders(archive);
    std::vector<Path> unfinished;
    if (found)
        std::copy_if(found->unlisted.begin(), found->unlisted.end(), std::back_inserter(unfinished),
                     [&](const Path& folder) {
                         return IsUnfinishedIntake(folders, archive, folder).ValueOr(false);
                     });
    return unfinished;
}

void ClearUnfinishedIntakes(Host& host, const Folders& folders, const Archive& archive)
{
    // The last one that came in may have got onto the list right before a kill.
    if (archive.Loaded() && !archive.levels.empty())
        (void)DropIntakeMark(LevelHomeOf(folders, archive.levels.back().levelCode));
    const std::vector<Path> unfinished = UnfinishedIntakes(folders, archive);
    bool all = !unfinished.empty();
    for (const Path& folder : unfinished)
        if (const auto cleared = ClearUnfinishedIntake(folder); !cleared) {
            all = false;
            TellFailure(host, GetMsg(Msg::LeftIntakeStays, {TextOf(folder)}), cleared.Error());
        }
    if (all)
        host.Tell(Tone::Plain, GetMsg(Msg::LeftIntakeCleared));
}

} // namespace kestrova
