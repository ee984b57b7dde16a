#include "archive/level_folders.h"

#include "core/file_kinds.h"
#include "core/look.h"
#include "core/text.h"
#include "formats/level_folder.h"
#include "session/telling.h"
#include "words/archive.h"

#include <algorithm>

namespace kestrova
{

std::ptrdiff_t FindLevel(const std::vector<LevelRecord>& levels, LevelCode code)
{
    const auto found = std::find_if(levels.begin(), levels.end(), [&](const LevelRecord& level) {
        return level.levelCode == code;
    });
    return found == levels.end() ? -1 : found - levels.begin();
}

std::ptrdiff_t FindLevel(const Archive& archive, LevelCode code)
{
    return FindLevel(archive.levels, code);
}

std::string LevelNameOf(const Archive& archive, LevelCode code)
{
    const std::ptrdiff_t index = FindLevel(archive, code);
    return index < 0 ? std::string{}
                     : std::string{Trim(archive.levels[static_cast<std::size_t>(index)].levelName)};
}

LevelCode NextLevelCode(const Archive& archive)
{
    LevelCode next = 0;
    for (const LevelRecord& level : archive.levels)
        next = std::max(next, level.levelCode + 1);
    return next;
}

std::string LevelFolderName(LevelCode code)
{
    return Filled(OnDisk::FragLevelFolder, {ZeroPadded(code, 4)});
}

Path LevelHomeOf(const Folders& folders, LevelCode code)
{
    return InFolder(code == originalCode ? folders.program : folders.levels, LevelFolderName(code));
}

Result<Path> LevelFolderOf(const Folders& folders, const Archive& archive, LevelCode code,
                           DiscWish wish)
{
    const LevelRecord* level = code == originalCode ? nullptr : archive.Find(code);
    if (level == nullptr || level->cdNumber == 0)
        return LevelHomeOf(folders, code);
    if (folders.discs == nullptr)
        return Saying(GetMsg(Msg::CdNotAvailable), MakeFailure(ErrorCode::Missing, {}));
    const auto disc = folders.discs->FolderOfDisc(archive, *level, wish);
    if (!disc)
        return disc.Error();
    return InFolder(*disc, LevelFolderName(code));
}

Path StateStoreOf(const Folders& folders, LevelCode code)
{
    return InFolder(LevelHomeOf(folders, code), OnDisk::DirBackupSavegames);
}

Path HomeOf(const Folders& folders, const LevelPlace& level)
{
    return level.home.empty() ? LevelHomeOf(folders, level.code) : level.home;
}

Path StateStoreOf(const Folders& folders, const LevelPlace& level)
{
    return InFolder(HomeOf(folders, level), OnDisk::DirBackupSavegames);
}

Status MakeLevelSubfolders(const Path& folder)
{
    if (auto status = MakeFolder(folder); !status)
        return status;
    for (const std::string_view part : {OnDisk::DirSavegames, OnDisk::DirBackupSavegames,
                                        OnDisk::DirFiles, OnDisk::DirScreenshots})
        if (auto status = MakeFolder(InFolder(folder, part)); !status)
            return status;
    return {};
}

Result<bool> IsArchiveFolder(const Archive& archive, const Path& folder)
{
    const auto isThere = IsFolder(folder);
    if (!isThere || !*isThere)
        return isThere;
    const auto& levels = archive.levels;
    const auto first = std::find_if(levels.begin(), levels.end(), [](const LevelRecord& level) {
        return level.levelCode != originalCode && level.cdNumber == 0;
    });
    if (first == levels.end() || FolderExists(InFolder(folder, LevelFolderName(first->levelCode))))
        return true;
    const auto folders = ListSubfolders(folder);
    if (!folders || !folders->empty())
        return folders ? Result<bool>{true} : folders.Error();
    const auto files = ListFiles(folder, OnDisk::PatAll);
    return files ? Result<bool>{!files->empty()} : files.Error();
}

Status ArchiveFolderIsThere(const Archive& archive)
{
    const Path folder = FolderFromText(Trim(archive.header.secondaryFolder));
    const auto isThere = IsArchiveFolder(archive, folder);
    if (!isThere)
        return FolderNotRead(isThere.Error());
    if (!*isThere)
        return Saying(GetMsg(Msg::ArchiveFolderUnplugged, {TextOf(folder)}),
                      MakeFailure(ErrorCode::Missing, TextOf(folder)));
    return {};
}

void FollowDiscs(Archive& archive)
{
    archive.header.cdCount = 0;
    for (const LevelRecord& level : archive.levels)
        archive.header.cdCount = std::max(archive.header.cdCount, level.cdNumber);
    if (archive.header.cdCount == 0)
        archive.header.mainFolder = archive.header.secondaryFolder;
}

bool IsArchiveOnCd(const Archive& archive)
{
    return archive.header.cdCount >= 1;
}

Status GuardLevelOnCd(const LevelRecord& level)
{
    if (level.cdNumber == 0)
        return {};
    return Saying(GetMsg(Msg::LevelOnCd, {lineBreak}), MakeFailure(ErrorCode::Refused, {}));
}

Result<Path> FilesFolderOf(const Folders& folders, const Archive& archive, LevelCode code,
                           DiscWish wish)
{
    const auto folder = LevelFolderOf(folders, archive, code, wish);
    if (!folder)
        return folder.Error();
    return InFolder(*folder, OnDisk::DirFiles);
}

} // namespace kestrova
