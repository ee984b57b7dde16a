#include "storage/unstore.h"

#include "core/copying.h"
#include "core/file_kinds.h"
#include "core/removal.h"
#include "core/text.h"
#include "formats/program_folder.h"
#include "storage/file_jobs.h"
#include "storage/files_exchange.h"
#include "storage/game_files.h"
#include "storage/storage.h"
#include "storage/zl_file.h"
#include "words/storage.h"

#include <algorithm>

namespace kestrova
{

namespace
{

bool MustBeExpanded(const std::string& name, bool mp3ToWave)
{
    return EndsWithName(name, OnDisk::ZlExtension) || EqualNames(name, OnDisk::LoadJpg) ||
           (mp3ToWave && EndsWithName(name, OnDisk::Mp3Extension));
}

/// The files that are stored as they are, beside those that were expanded.
Status CopyTheRest(const std::vector<ReadyFile>& files, const Path& temp, ProgressScope& progress)
{
    if (auto status = MakeFolder(temp); !status)
        return status;
    for (const ReadyFile& file : files) {
        if (file.moved)
            continue;
        CopyOptions options;
        options.progress = [&](std::uint64_t) { return progress.Step(); };
        if (auto status = CopyFileOver(file.path, temp / file.name, options); !status)
            return status;
        progress.Step();
    }
    return {};
}

} // namespace

Result<Path> UnstoreLevelFiles(Host& host, Machine& machine, const SoundConverter& converter,
                               const Path& folder, bool mp3ToWave, MayStop mayStop)
{
    const auto failed = [&](const Failure& failure) {
        return Saying(GetMsg(Msg::ErrorUnzippingFile) + FileNameOf(failure.subject) + "'", failure);
    };
    const auto stored = ListFiles(folder, OnDisk::PatAll);
    if (!stored)
        return failed(stored.Error());
    if (FolderExists(folder) && std::none_of(stored->begin(), stored->end(), [&](const Path& file) {
            return MustBeExpanded(file.filename().native(), mp3ToWave);
        }))
        return Path{};
    const Path temp = InFolder(converter.tools.programFolder, OnDisk::DirTempDec);
    const auto zip = host.BeginProgress(ProgressWindow::Zip, GetMsg(Msg::DecompressingFiles));
    if (mayStop == MayStop::Yes)
        zip->AllowStop();
    const auto files =
        ReadyLevelFiles(host, machine, converter, folder, temp, mp3ToWave, zip.get());
    if (!files)
        return failed(files.Error());
    zip->SetLabel(GetMsg(Msg::CopyingFilesLabel));
    if (const auto status = CopyTheRest(*files, temp, *zip); !status) {
        (void)ClearPlace(temp); // the next use clears what stays
        return failed(status.Error());
    }
    zip->SetLabel({});
    return temp;
}

Result<Path> DecompressSingleFile(Host& host, Machine& machine, const Folders& folders,
                                  const Path& file, bool showDialog)
{
    const std::string name = TextOf(file.filename());
    std::unique_ptr<ProgressScope> zip;
    if (showDialog)
        zip = host.BeginProgress(ProgressWindow::Zip, GetMsg(Msg::DecompressingFile) + name);
    const Path temp = InFolder(folders.program, OnDisk::DirTemp);
    const Path target = temp / StripExtension(file.filename().native());
    const auto expand = [&]() -> Status {
        if (auto status = MakeFolder(temp); !status)
            return status;
        const auto free = machine.FreeSpace(temp);
        if (!free)
            return free.Error();
        return ExpandZl(file, target, *free);
    };
    const auto status = RunFileJobs({{FileSize(file), {}, expand}}, zip.get());
    if (!status)
        return Saying(GetMsg(Msg::ErrorDecompressingFile) + name + "'", status.Error());
    return target;
}

} // namespace kestrova
