#include "archive/level_folders.h"

#include "core/look.h"
#include "formats/level_folder.h"
#include "words/archive.h"

#include <algorithm>

namespace kestrova
{

std::ptrdiff_t FindLevel(const Session& session, LevelCode code)
{
    const auto found =
        std::find_if(session.archive.levels.begin(), session.archive.levels.end(),
                     [&](const LevelRecord& level) { return level.levelCode == code; });
    return found == session.archive.levels.end() ? -1 : found - session.archive.levels.begin();
}

std::string LevelNameOf(const Session& session, LevelCode code)
{
    const std::ptrdiff_t index = FindLevel(session, code);
    return index < 0 ? std::string{}
                     : std::string{
                           Trim(session.archive.levels[static_cast<std::size_t>(index)].levelName)};
}

LevelCode NextLevelCode(const Session& session)
{
    LevelCode next = 0;
    for (const LevelRecord& level : session.archive.levels)
        next = std::max(next, level.levelCode + 1);
    return next;
}

std::string LevelFolderName(LevelCode code)
{
    return Filled(OnDisk::FragLevelFolder, {ZeroPadded(code, 4)});
}

Path LevelHomeOf(const Session& session, LevelCode code)
{
    const Folders folders = session.Folders();
    return InFolder(code == originalCode ? folders.program : folders.levels, LevelFolderName(code));
}

Result<Path> LevelFolderOf(const Session& session, LevelCode code)
{
    const LevelRecord* level = code == originalCode ? nullptr : session.archive.Find(code);
    if (level != nullptr && level->cdNumber != 0)
        return Failure{ErrorCode::Missing, {}, GetMsg(Msg::CdNotAvailable)};
    return LevelHomeOf(session, code);
}

Path StateStoreOf(const Session& session, LevelCode code)
{
    return InFolder(LevelHomeOf(session, code), OnDisk::DirBackupSavegames);
}

Path HomeOf(const Session& session, const LevelPlace& level)
{
    return level.home.empty() ? LevelHomeOf(session, level.code) : level.home;
}

Path StateStoreOf(const Session& session, const LevelPlace& level)
{
    return InFolder(HomeOf(session, level), OnDisk::DirBackupSavegames);
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

bool IsArchiveFolderThere(Session& session)
{
    const Path folder = FolderFromText(Trim(session.archive.header.secondaryFolder));
    const auto isThere = IsFolder(folder);
    if (!isThere)
        return TellFolderNotRead(session, isThere.Error());
    if (!*isThere)
        session.host.Tell(Tone::Error, GetMsg(Msg::ArchiveFolderUnplugged, {TextOf(folder)}));
    return *isThere;
}

bool IsArchiveOnCd(const Session& session)
{
    return session.archive.header.cdCount >= 1;
}

bool GuardLevelOnCd(Session& session, const LevelRecord& level)
{
    if (level.cdNumber == 0)
        return false;
    session.host.Tell(Tone::Error, GetMsg(Msg::LevelOnCd, {lineBreak}));
    return true;
}

} // namespace kestrova
