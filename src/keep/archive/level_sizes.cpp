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

void AddLevelSize(const ArchiveParts& parts, double delta, SizeKind kind, std::size_t index)
{
    CountLevelSize(parts.archive, delta, kind, index);
    SaveArchive(parts);
}

void RefreshLevelSizes(const ArchiveParts& parts, LevelCode code)
{
    const std::ptrdiff_t index = FindLevel(parts.archive, code);
    if (index < 0)
        return;
    LevelRecord& level = parts.archive.levels[static_cast<std::size_t>(index)];
    const auto sizes = Measured(parts.folders, level);
    if (!sizes)
        return; // a number that is shown; it is told when all sizes are computed anew
    if (index > 0) {
        parts.archive.header.mainFolderSize += sizes->files - level.filesSize;
        parts.archive.header.secondaryFolderSize += sizes->extras - level.extrasSize;
    }
    level.filesSize = SizeField(sizes->files);
    level.extrasSize = SizeField(sizes->extras);
    SaveArchive(parts);
}

Status RecomputeArchiveSize(const ArchiveParts& parts, bool withProgress)
{
    const std::size_t count = parts.archive.levels.size();
    std::unique_ptr<ProgressScope> progress;
    if (withProgress) {
        progress = parts.host.BeginProgress(ProgressWindow::Progress,
                                            GetMsg(Msg::ComputingSizes, {std::to_string(count)}));
        progress->AllowStop();
    }
    bool finished = true;
    Status read;
    for (std::size_t i = 0; i < count && finished; ++i) {
        LevelRecord& level = parts.archive.levels[i];
        if (const auto sizes = Measured(parts.folders, level)) {
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
    parts.archive.header.mainFolderSize = 0;
    parts.archive.header.secondaryFolderSize = 0;
    for (std::size_t i = 1; i < count; ++i) {
        parts.archive.header.mainFolderSize += parts.archive.levels[i].filesSize;
        parts.archive.header.secondaryFolderSize += parts.archive.levels[i].extrasSize;
    }
    SaveArchive(parts);
    Failure failure = read ? Failure{} : FolderNotRead(read.Error());
    if (!finished)
        failure.code = ErrorCode::Stopped;
    return read && finished ? Status{} : failure;
}

} // namespace kestrova
