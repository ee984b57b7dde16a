#include "levels/original_level.h"

#include "levels/remove_level.h"

#include "archive/level_folders.h"
#include "core/copying.h"
#include "core/file_kinds.h"
#include "core/removal.h"
#include "formats/level_folder.h"
#include "formats/program_folder.h"
#include "formats/trle_folder.h"
#include "levels/file_names.h"
#include "session/telling.h"
#include "words/levels.h"

namespace kestrova
{

namespace
{

/// What of the Level Editor's folder and its backup shows and keeps the original configuration.
Status FillOriginalLevel(const Folders& folders, const Path& folder)
{
    if (auto status = MakeLevelSubfolders(folder); !status)
        return status;
    const Path trle = folders.trle;
    const Path picture = trle / OnDisk::LoadBmp;
    if (FileExists(picture)) {
        const Path shots = InFolder(folder, OnDisk::DirScreenshots);
        if (auto status = CopyFileOver(picture, InFolder(shots, OnDisk::FragOriginalShot)); !status)
            return status;
    }
    if (auto status = CopyMatching(folders.Backup(), InFolder(folder, OnDisk::DirBackupSavegames),
                                   OnDisk::SavegamePattern);
        !status)
        return status;
    return CopyMatching(InFolder(trle, OnDisk::FragManual), InFolder(folder, OnDisk::DirFiles),
                        OnDisk::PatAll);
}

} // namespace

Result<bool> EnsureLevel0Folder(const Folders& folders)
{
    const Path folder = LevelHomeOf(folders, originalCode);
    if (FolderExists(folder))
        return false;
    // Built aside: a folder of that name is taken for whole.
    const Path aside = InFolder(folders.program, OnDisk::FragBuildingLevel0);
    Status built = ClearPlace(aside);
    if (built)
        built = FillOriginalLevel(folders, aside);
    if (built)
        if (const auto failure = platform::Rename(aside, folder))
            built = MakeFailure(ErrorCode::CannotWrite, TextOf(folder), failure);
    if (!built) {
        (void)ClearPlace(aside); // what stays is removed by the next start
        return built.Error();
    }
    return true;
}

void TellNoLevel0(Host& host, const Folders& folders, const Failure& failure)
{
    TellFailure(host, GetMsg(Msg::Level0Failed, {TextOf(LevelHomeOf(folders, originalCode))}),
                failure);
    host.Tell(Tone::Error, GetMsg(Msg::ErrorLevel0));
}

} // namespace kestrova
