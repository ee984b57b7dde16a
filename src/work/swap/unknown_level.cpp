#include "swap/unknown_level.h"

#include "archive/level_folders.h"
#include "core/file_kinds.h"
#include "history/history.h"
#include "history/swap_journal_file.h"
#include "session/telling.h"
#include "swap/backup_state.h"
#include "swap/live_state.h"
#include "words/restore.h"

namespace kestrova
{

bool IsUnknownLevel(const Folders& folders)
{
    const auto owner = ReadOwner(folders);
    const auto other = BackupSeemsOfAnother(folders);
    return owner && !*owner && other && (BackupIsAway(folders) || *other);
}

bool ForgetLevel(const SwapParts& parts, LevelCode code)
{
    const auto failed = [&](const Failure& failure) {
        TellFailure(parts.host, GetMsg(Msg::CannotKeepState), failure);
        return false;
    };
    const LevelPlace level{code};
    auto files = ListFiles(parts.folders.trle, OnDisk::PatAll);
    if (!files)
        return failed(files.Error());
    std::erase_if(*files,
                  [](const Path& file) { return !IsPlayersFile(file.filename().native()); });
    const auto live = HashesOf(*files);
    if (!live)
        return failed(live.Error());
    if (const auto status = KeepInHistory(parts.machine, parts.folders, parts.settings, level,
                                          *files, Told(Msg::ReasonForgotten));
        !status)
        return failed(status.Error());
    std::vector<OwnedFile> left; // what a game wrote since: it is the original configuration's now
    if (const auto status =
            DropLiveState(parts.machine, parts.folders, parts.settings, level, *live, left);
        !status)
        return failed(status.Error());
    if (const auto status = DeleteFile(parts.folders.Marker()); !status)
        return failed(status.Error());
    parts.host.Tell(Tone::Warning,
                    GetMsg(Msg::LevelForgotten, {ZeroPadded(code, 4), std::to_string(code)}));
    return true;
}

} // namespace kestrova
