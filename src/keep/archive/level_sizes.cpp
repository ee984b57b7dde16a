#include "archive/level_sizes.h"

#include "archive/archive_saving.h"
#include "archive/level_folders.h"
#include "formats/level_folder.h"
#include "session/telling.h"
#include "words/archive.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kestrova
{

namespace
{

struct Sizes {
    double files = 0;
    double extras = 0;
};

Result<Sizes> Measured(const Folders& folders, const LevelRecord& level)
{
    const Path folder = LevelHomeOf(folders, level.levelCode);
    const auto extras = ExtrasSizeOf(folder);
    const auto files = level.cdNumber == 0 ? FolderSize(InFolder(folder, OnDisk::DirFiles))
                                           : Result<double>{static_cast<double>(level.filesSize)};
    if (!extras || !files)
        return extras ? files.Error() : extras.Error();
    return Sizes{*files, *extras};
}

} // namespace

std::int32_t SizeField(double bytes)
{
    constexpr double most = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::clamp(std::nearbyint(bytes), -most, most));
}

Result<double> ExtrasSizeOf(const Path& levelFolder)
{
    double sum = 0;
    for (const std::string_view part :
         {OnDisk::DirSavegames, OnDisk::DirBackupSavegames, OnDisk::DirScreenshots}) {
        const auto size = FolderSize(InFolder(levelFolder, part));
        if (!size)
            return size.Error();
        sum += *size;
    }
    return sum;
}

void CountLevelSize(Archive& archive, double delta, SizeKind kind, std::size_t index)
{
    LevelRecord& level = archive.levels[index];
    std::int32_t& field = kind == SizeKind::Files ? level.filesSize : level.extrasSize;
    field = SizeField(field + delta);
    if (index > 0)
        (kind == SizeKind::Files ? archive.header.mainFolderSize
                                 : archive.header.secondaryFolderSize) += delta;
}

void AddLevelSize(Session& session, double delta, SizeKind kind, std::size_t index)
{
    CountLevelSize(session.archive, delta, kind, index);
    SaveArchive(session);
}

void RefreshLevelSizes(Session& session, LevelCode code)
{
    const std::ptrdiff_t index = FindLevel(session.archive, code);
    if (index < 0)
        return;
    LevelRecord& level = session.archive.levels[static_cast<std::size_t>(index)];
    const auto sizes = Measured(session.Folders(), level);
    if (!sizes)
        return; // a number that is shown; it is told when all sizes are computed anew
    if (index > 0) {
        session.archive.header.mainFolderSize += sizes->files - level.filesSize;
        session.archive.header.secondaryFolderSize += sizes->extras - level.extrasSize;
    }
    level.filesSize = SizeField(sizes->files);
    level.extrasSize = SizeField(sizes->extras);
    SaveArchive(session);
}

Status RecomputeArchiveSize(Session& session, bool withProgress)
{
    const std::size_t count = session.archive.levels.size();
    std::unique_ptr<ProgressScope> progress;
    if (withProgress) {
        progress = session.host.BeginProgress(ProgressWindow::Progress,
                                              GetMsg(Msg::ComputingSizes, {std::to_string(count)}));
        progress->AllowStop();
    }
    bool finished = true;
    Status read;
    for (std::size_t i = 0; i < count && finished; ++i) {
        LevelRecord& level = session.archive.levels[i];
        if (const auto sizes = Measured(session.Folders(), level)) {
            level.filesSize = SizeField(sizes->files);
            level.extrasSize = SizeField(sizes->extras);
            level.extrasDirty = false;
        } else if (read) {
            read = sizes.Error();
        }
        if (progress) {
            progress->SetBar(i + 1, count);
            finished = progress->Step();
        }
    }
    session.archive.header.mainFolderSize = 0;
    session.archive.header.secondaryFolderSize = 0;
    for (std::size_t i = 1; i < count; ++i) {
        session.archive.header.mainFolderSize += session.archive.levels[i].filesSize;
        session.archive.header.secondaryFolderSize += session.archive.levels[i].extrasSize;
    }
    SaveArchive(session);
    Failure failure = read ? Failure{} : FolderNotRead(read.Error());
    if (!finished)
        failure.code = ErrorCode::Stopped;
    return read && finished ? Status{} : failure;
}

} // namespace kestrova
