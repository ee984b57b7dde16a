#include "levels/unfinished_intake.h"

#include "archive/level_folders.h"
#include "archive/set_aside.h"
#include "core/copying.h"
#include "core/leftovers.h"
#include "core/look.h"
#include "core/removal.h"
#include "core/staged_file.h"
#include "core/text.h"
#include "formats/exact_names.h"
#include "formats/level_folder.h"
#include "formats/level_folder_name.h"
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

Status MarkIntakeWhole(const Path& levelFolder, const LevelRecord& level)
{
    ExactNames exact;
    MergeExactNames(exact, {level});
    const auto noted = WriteWholeFile(IntakeMark(ResolvePath(levelFolder)),
                                      FormatArchive({}, {level}) + FormatExactNames(exact));
    // A folder without the mark is set aside at worst.
    return noted ? noted : DropIntakeMark(levelFolder);
}

void MarkIntakeUnfinished(const Path& levelFolder)
{
    if (!WriteWholeFile(IntakeMark(ResolvePath(levelFolder)), {}))
        (void)DropIntakeMark(levelFolder); // what stays of the folder is set aside then
}

Result<std::optional<LevelRecord>> WholeIntakeIn(const Path& levelFolder)
{
    constexpr std::uint64_t longestMark = 1 << 20;
    const auto bytes = ReadFileIfThere(IntakeMark(ResolvePath(levelFolder)), longestMark);
    if (!bytes)
        return bytes.Error();
    auto content = *bytes ? ParseArchive(**bytes) : Result<ArchiveContent>{Failure{}};
    if (!content || content->levels.size() != 1 ||
        content->levels.front().levelCode !=
            CodeOfLevelFolder(levelFolder.filename().native()).value_or(originalCode))
        return std::optional<LevelRecord>{};
    ApplyExactNames(
        ParseExactNames(std::string_view{**bytes}.substr(archiveHeaderSize + levelRecordSize)),
        content->levels);
    return std::optional{std::move(content->levels.front())};
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
    const auto mark = LookAt(IntakeMark(ResolvePath(levelFolder)));
    if (!mark)
        return mark.Error();
    return mark->kind == platform::FileKind::File && mark->size == 0;
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
