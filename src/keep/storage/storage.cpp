#include "storage/storage.h"

#include "archive/level_folders.h"
#include "core/file_kinds.h"
#include "core/leftovers.h"
#include "core/look.h"
#include "core/removal.h"
#include "core/text.h"
#include "formats/level_folder.h"
#include "formats/program_folder.h"
#include "storage/file_jobs.h"
#include "storage/files_exchange.h"
#include "storage/form_clashes.h"
#include "storage/level_index.h"
#include "storage/ready_streams.h"
#include "storage/store_steps.h"
#include "storage/stored_audio.h"
#include "storage/stored_hashes.h"
#include "words/storage.h"

namespace kestrova
{

namespace
{

/// The files are on the disk before the folder that they replace is gone.
Status FlushFiles(const Path& folder, ProgressScope* progress)
{
    const auto files = ListFiles(folder, OnDisk::PatAll);
    if (!files)
        return files.Error();
    std::vector<FileJob> jobs;
    for (const Path& file : *files)
        jobs.push_back({1, GetMsg(Msg::StoreFileCopy), [file]() -> Status {
                            platform::File handle;
                            auto failure = platform::File::OpenForRead(file, handle);
                            if (!failure)
                                failure = handle.Sync();
                            if (failure)
                                return MakeFailure(ErrorCode::CannotWrite, TextOf(file), failure);
                            return {};
                        }});
    if (auto status = RunFileJobs(std::move(jobs), progress); !status)
        return status;
    if (const auto failure = platform::SyncFolder(folder))
        return MakeFailure(ErrorCode::CannotWrite, TextOf(folder), failure);
    return {};
}

/// Fills `files.new` from the steps and puts it in place.
Status FillAndExchange(const std::vector<StoreStep>& steps, const Path& files,
                       ProgressScope* progress, const ReadyStreams* ready)
{
    if (auto status = FinishExchange(files); !status)
        return status;
    const Path fresh = BesideFiles(files, OnDisk::EndingNew);
    NotePlace(files.parent_path());
    if (auto status = MakeFolder(fresh); !status)
        return status;
    std::vector<FileJob> jobs;
    for (const StoreStep& step : steps)
        jobs.push_back(
            JobFor(step, [&step, &fresh, ready] { return RunStep(step, fresh, ready); }));
    Status status = RunFileJobs(std::move(jobs), progress);
    if (status)
        status = FlushFiles(fresh, progress);
    if (status)
        status = ExchangeFiles(files);
    if (!status)
        (void)ClearPlace(fresh); // what stays is cleared by the next store
    return status;
}

/// Each file becomes its stored form where it lies; it goes when that was read back.
Status ConvertInPlace(const std::vector<StoreStep>& steps, const Path& folder,
                      ProgressScope* progress, const ReadyStreams* ready)
{
    std::vector<FileJob> jobs;
    for (const StoreStep& step : steps)
        if (step.form != StoreStep::Form::Copy)
            jobs.push_back(
                JobFor(step, [&step, &folder, ready] { return RunInPlace(step, folder, ready); }));
    return RunFileJobs(std::move(jobs), progress);
}

Status NotStored(Status status)
{
    return Saying(GetMsg(Msg::ErrorStoringFiles), std::move(status));
}

Result<std::vector<LevelFile>> FilesOf(const Path& folder)
{
    const auto listed = ListFiles(folder, OnDisk::PatAll);
    if (!listed)
        return listed.Error();
    std::vector<LevelFile> files;
    for (const Path& file : *listed)
        files.push_back({file.filename().native(), file});
    return files;
}

/// A Stop comes too late there: the files are stored.
Heartbeat KeepAlive(ProgressScope* label)
{
    return [label] {
        if (label != nullptr)
            (void)label->Step();
        return true;
    };
}

std::vector<std::string> NamesOf(const std::vector<LevelFile>& files)
{
    std::vector<std::string> names;
    for (const LevelFile& file : files)
        names.push_back(file.name);
    return names;
}

bool Compresses(const Archive& archive, LevelCode code, StoreAs form)
{
    return form == StoreAs::ArchiveSays && archive.header.compressLevels && code != originalCode;
}

bool ConvertsWaves(const Archive& archive, LevelCode code, StoreAs form)
{
    return form == StoreAs::ArchiveSays && archive.header.wavInMp3 && code != originalCode;
}

} // namespace

Status StoreFilesOfLevel(Host& host, const Folders& folders, const Archive& archive,
                         const SoundConverter& converter, LevelCode code,
                         const std::vector<LevelFile>& files, ProgressScope* label, StoreAs form,
                         const AcceptLoss& accept, const ReadyStreams* ready)
{
    if (auto status = WriteLevelIndex(folders, code, files); !status)
        return NotStored(status);
    const auto folder = LevelFolderOf(folders, archive, code);
    if (!folder)
        return folder.Error();
    const bool compress = Compresses(archive, code, form);
    const Path target = ResolvePath(InFolder(*folder, OnDisk::DirFiles));
    const auto store = [&](const std::vector<LevelFile>& plain, const WaveOrigins& waves) {
        std::vector<std::string> kept;
        const auto steps = StepsFor(plain, compress, kept);
        TellKeptForms(host, kept);
        auto status = FillAndExchange(steps, target, label, ready);
        if (status && code != originalCode)
            NoteStoredFiles(target.parent_path(), OriginsOf(steps, waves.Of(NamesOf(plain))),
                            KeepAlive(label));
        return NotStored(std::move(status));
    };
    if (!ConvertsWaves(archive, code, form))
        return store(files, {});
    const WorkFolder work{InFolder(folders.program, OnDisk::DirTempCompr), WorkFolder::Make::Now};
    std::vector<LevelFile> encoded = files;
    WaveOrigins waves;
    for (const LevelFile& file : files)
        waves.Add(file.name, file.path);
    auto status = EncodeWaves(host, converter, encoded, work.Folder(), accept);
    return status ? store(encoded, waves) : NotStored(status);
}

namespace
{

/// The files of a level's own folder take their stored form where they lie.
Status StoreInPlace(Host& host, const Archive& archive, const SoundConverter& converter,
                    const Path& place, LevelCode code, ProgressScope* label, StoreAs form,
                    const AcceptLoss& accept, const ReadyStreams* ready)
{
    StoredWatch watch{place.parent_path(), KeepAlive(label)};
    watch.NoteAllIfNew();
    WaveOrigins waves;
    if (ConvertsWaves(archive, code, form)) {
        const auto plain = FilesOf(place);
        if (!plain)
            return plain.Error();
        for (const LevelFile& file : *plain)
            waves.Add(file.name, file.path);
        if (auto status = EncodeWavesInPlace(host, converter, place, accept); !status)
            return status;
    }
    const auto encoded = FilesOf(place);
    if (!encoded)
        return encoded.Error();
    const StoredOrigins made = waves.Of(NamesOf(*encoded));
    if (!Compresses(archive, code, form)) {
        watch.AreMadeFrom(made);
        return {};
    }
    std::vector<std::string> kept;
    const auto steps = StepsFor(*encoded, true, kept);
    TellKeptForms(host, kept);
    watch.AreMadeFrom(OriginsOf(steps, made));
    return ConvertInPlace(steps, place, label, ready);
}

} // namespace

Status StoreLevelFiles(Host& host, const Folders& folders, const Archive& archive,
                       const SoundConverter& converter, const Path& source, LevelCode code,
                       ProgressScope* label, StoreAs form, const AcceptLoss& accept,
                       const ReadyStreams* ready)
{
    if (!FolderExists(source))
        return NotStored(MakeFailure(ErrorCode::Missing, TextOf(source)));
    const auto listed = FilesOf(source);
    if (!listed)
        return NotStored(listed.Error());
    const std::vector<LevelFile>& files = *listed;
    const Path home = InFolder(LevelHomeOf(folders, code), OnDisk::DirFiles);
    if (!IsSameFolder(source, home))
        return StoreFilesOfLevel(host, folders, archive, converter, code, files, label, form,
                                 accept, ready);
    if (code == originalCode) // it has no stored form
        return NotStored(MakeFailure(ErrorCode::Refused, TextOf(source)));
    if (auto status = WriteLevelIndex(folders, code, files); !status)
        return NotStored(status);
    return NotStored(StoreInPlace(host, archive, converter, ResolvePath(source), code, label, form,
                                  accept, ready));
}

} // namespace kestrova
