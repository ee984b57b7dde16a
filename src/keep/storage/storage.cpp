#include "storage/storage.h"

#include "archive/level_folders.h"
#include "core/copying.h"
#include "core/file_kinds.h"
#include "core/leftovers.h"
#include "core/look.h"
#include "core/parallel.h"
#include "core/removal.h"
#include "core/text.h"
#include "formats/level_folder.h"
#include "formats/program_folder.h"
#include "pictures/convert.h"
#include "pictures/jpeg.h"
#include "pictures/picture.h"
#include "storage/compressed_kinds.h"
#include "storage/file_jobs.h"
#include "storage/files_exchange.h"
#include "storage/form_clashes.h"
#include "storage/level_index.h"
#include "storage/ready_streams.h"
#include "storage/stored_audio.h"
#include "storage/stored_hashes.h"
#include "storage/zl_file.h"
#include "words/storage.h"

#include <algorithm>
#include <map>
#include <set>

namespace kestrova
{

namespace
{

/// One file on its way into the stored form.
struct StoreStep {
    Path source;
    std::string name; ///< in the stored folder
    enum class Form { Copy, Deflate, Jpeg } form = Form::Copy;
};
using Form = StoreStep::Form;

/// A name that is too long with its further ending stays the plain file's.
bool FitsCompressed(const std::string& name)
{
    constexpr std::size_t longestName = 255; // bytes that a file system takes
    return name.size() + OnDisk::ZlExtension.size() <= longestName;
}

/// The step of a file when no other file stands in the way of its stored form.
StoreStep StepFor(const LevelFile& file, bool compress)
{
    StoreStep step{file.path, file.name, Form::Copy};
    if (compress && IsCompressed(file.name) && FitsCompressed(file.name)) {
        step.name += OnDisk::ZlExtension;
        step.form = Form::Deflate;
    } else if (compress && EqualNames(file.name, OnDisk::LoadBmp)) {
        step.name = std::string{OnDisk::LoadJpg};
        step.form = Form::Jpeg;
    }
    return step;
}

/// A load picture beside the jpeg that a killed run made of it.
bool IsMadeOf(const LevelFile& jpeg, const LevelFile& bitmap)
{
    const auto picture = ReadPictureFile(bitmap.path);
    const auto made = picture ? EncodeJpeg(*picture) : Result<std::string>{picture.Error()};
    const auto bytes = ReadWholeFile(jpeg.path);
    return made && bytes && *made == *bytes;
}

/// True when `other`, which has the name of the stored form, is that form already.
bool IsStoredForm(const StoreStep& step, const LevelFile& file, const LevelFile& other)
{
    return step.form == Form::Jpeg ? IsMadeOf(other, file) : StreamHolds(other.path, file.path);
}

/// A file whose stored form would have another file's name stays as it is, and so do files whose
/// names differ by case alone; `kept` names them.
std::vector<StoreStep> StepsFor(const std::vector<LevelFile>& files, bool compress,
                                std::vector<std::string>& kept)
{
    std::multimap<std::string, const LevelFile*> byName;
    for (const LevelFile& file : files)
        byName.emplace(FoldCase(file.name), &file);
    std::vector<StoreStep> steps;
    std::set<std::string> made; // stored forms that stand for their source too
    for (const LevelFile& file : files) {
        StoreStep step = StepFor(file, compress);
        const auto [other, last] = byName.equal_range(FoldCase(step.name));
        const bool isTwin = byName.count(FoldCase(file.name)) > 1;
        if (step.form != Form::Copy && (isTwin || other != last)) {
            if (!isTwin && std::next(other) == last && IsStoredForm(step, file, *other->second)) {
                made.insert(other->first);
            } else {
                kept.push_back(file.name);
                step = {file.path, file.name, Form::Copy};
            }
        }
        steps.push_back(std::move(step));
    }
    std::erase_if(steps, [&](const StoreStep& step) {
        return step.form == Form::Copy && made.contains(FoldCase(step.name));
    });
    return steps;
}

/// True when the jpeg stands and can be read again.
bool LoadPictureConverted(const Path& bitmap, const Path& jpeg)
{
    if (!ConvertBitmapToJpeg(bitmap, jpeg))
        return false;
    (void)platform::SetModified(jpeg,
                                platform::FactsOf(bitmap).modifiedNs); // bytes count, not times
    const auto bytes = ReadWholeFile(jpeg);
    return bytes && DecodePicture(*bytes);
}

Status Deflate(const StoreStep& step, const Path& target, const ReadyStreams* ready)
{
    return CompressToZl(step.source, target,
                        ready == nullptr ? std::string_view{} : ready->Of(step.source));
}

/// Ends with the file's stored form in `folder`, read back.
Status RunStep(const StoreStep& step, const Path& folder, const ReadyStreams* ready)
{
    const Path target = folder / step.name;
    CopyOptions compared;
    compared.verify = Verify::Content;
    if (step.form == Form::Deflate)
        return Deflate(step, target, ready);
    if (step.form == Form::Jpeg) {
        if (LoadPictureConverted(step.source, target))
            return {};
        // A picture that cannot be converted stays the bitmap that it is.
        if (auto status = DeleteFile(target); !status)
            return status;
        return CopyFileOver(step.source, folder / step.source.filename(), compared);
    }
    compared.spelled = true; // a case twin is another file of the level
    return CopyFileOver(step.source, target, compared);
}

FileJob JobFor(const StoreStep& step, std::function<Status()> run)
{
    std::string label = GetMsg(Msg::StoreFileCopy);
    if (step.form == Form::Deflate)
        label = GetMsg(Msg::StoreCompressing, {TextOf(step.source.filename())});
    else if (step.form == Form::Jpeg)
        label = GetMsg(Msg::StoreConvertingLoad);
    return {FileSize(step.source), std::move(label), std::move(run)};
}

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

/// What the stored forms are made of, while it is there. Of an mp3 that was made just now, the wave
/// that it was.
StoredOrigins OriginsOf(const std::vector<StoreStep>& steps, const StoredOrigins& made)
{
    std::vector<std::optional<StoredOrigin>> found(steps.size());
    RunOnAllCores(steps.size(), [&](std::size_t i) {
        const std::string name = steps[i].source.filename().native();
        if (const auto wave = made.find(name); wave != made.end())
            found[i] = wave->second;
        else if (steps[i].form != Form::Copy)
            found[i] = OriginOf(name, steps[i].source);
    });
    StoredOrigins origins;
    for (std::size_t i = 0; i < steps.size(); ++i)
        if (found[i])
            origins.emplace(steps[i].name, std::move(*found[i]));
    return origins;
}

/// Each file becomes its stored form where it lies; it goes when that was read back.
Status ConvertInPlace(const std::vector<StoreStep>& steps, const Path& folder,
                      ProgressScope* progress, const ReadyStreams* ready)
{
    std::vector<FileJob> jobs;
    for (const StoreStep& step : steps) {
        const auto run = [&step, &folder, ready]() -> Status {
            const bool jpeg = step.form == Form::Jpeg;
            const Path target = folder / step.name;
            if (jpeg && !LoadPictureConverted(step.source, target))
                return {}; // it stays the bitmap that it is
            if (!jpeg)
                if (auto status = Deflate(step, target, ready); !status)
                    return status;
            if (const auto failure = platform::Unlink(step.source))
                return MakeFailure(ErrorCode::CannotDelete, TextOf(step.source), failure);
            return {};
        };
        if (step.form != Form::Copy)
            jobs.push_back(JobFor(step, run));
    }
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
