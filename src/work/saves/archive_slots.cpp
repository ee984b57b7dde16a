#include "saves/archive_slots.h"

#include "core/file_kinds.h"
#include "core/look.h"
#include "core/parallel.h"
#include "core/text.h"
#include "formats/level_folder.h"
#include "formats/savegame_info.h"
#include "formats/trle_folder.h"
#include "platform/file_content.h"
#include "saves/savegame_plan.h"

namespace kestrova
{

namespace
{

/// Adds the hash of a live file when `other` holds the same bytes.
void NoteIfSame(const Path& live, const Path& other, std::set<std::string>& hashes)
{
    std::string hash;
    if (FileExists(live) && SameContent(live, other) && !platform::HashOfFile(live, hash))
        hashes.insert(hash);
}

} // namespace

Path SlotsRootOf(const Folders& folders, LevelCode code)
{
    return ResolvePath(InFolder(LevelHomeOf(folders, code), OnDisk::DirSavegames));
}

Path ArchiveSlot(const Path& root, int number)
{
    return root / (std::string{OnDisk::SlotPrefix} + std::to_string(number));
}

Result<std::vector<Path>> SavegamesIn(const Path& folder)
{
    return ListFiles(folder, OnDisk::SavegamePattern);
}

Result<int> LastSlot(const Path& root)
{
    const auto folders = ListSubfolders(root);
    if (!folders)
        return folders.Error();
    std::set<std::string> names;
    for (const Path& folder : *folders)
        names.insert(FoldCase(folder.filename().native()));
    int last = 0;
    while (names.contains(FoldCase(ArchiveSlot(root, last + 1).filename().native())))
        ++last;
    return last;
}

Result<ArchiveSlots> SurveySlots(const Path& root)
{
    const auto last = LastSlot(root);
    if (!last)
        return last.Error();
    ArchiveSlots slots;
    slots.free = *last + 1;
    using Found = std::vector<std::pair<std::int32_t, Path>>;
    std::vector<Found> found(static_cast<std::size_t>(*last));
    std::vector<std::optional<Failure>> failures(found.size());
    RunOnAllCores(found.size(), [&](std::size_t i) {
        auto files = SavegamesIn(ArchiveSlot(root, static_cast<int>(i) + 1));
        if (!files)
            failures[i] = files.Error();
        else
            for (Path& file : *files) {
                const SavegameInfo info = ReadSavegameInfo(file);
                if (info.unread) // it may be the double of a live one
                    failures[i] = MakeFailure(ErrorCode::CannotRead, TextOf(file), info.unread);
                found[i].emplace_back(info.number, std::move(file));
            }
    });
    for (const auto& failure : failures)
        if (failure)
            return *failure;
    for (Found& slot : found)
        for (auto& entry : slot)
            slots.byNumber.insert(std::move(entry));
    return slots;
}

void NoteArchived(const ArchiveSlots& slots, const Path& live, std::int32_t number,
                  std::set<std::string>& hashes)
{
    const auto mine = CompanionsOf(SlotNumberOf(live));
    const auto [first, last] = slots.byNumber.equal_range(number);
    for (auto other = first; other != last; ++other) {
        NoteIfSame(live, other->second, hashes);
        const auto theirs = CompanionsOf(SlotNumberOf(other->second));
        for (std::size_t i = 0; i < mine.size(); ++i)
            NoteIfSame(ResolvePath(live.parent_path() / mine[i]),
                       ResolvePath(other->second.parent_path() / theirs[i]), hashes);
    }
}

int CountArchivedSavegames(const Folders& folders, LevelCode code)
{
    const Path root = SlotsRootOf(folders, code);
    const auto last = LastSlot(root);
    std::size_t count = 0;
    for (int number = 1; last && number <= *last; ++number)
        if (const auto files = SavegamesIn(ResolvePath(ArchiveSlot(root, number))))
            count += files->size();
    return static_cast<int>(count);
}

} // namespace kestrova
