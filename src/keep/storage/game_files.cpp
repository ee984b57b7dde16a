#include "storage/game_files.h"

#include "core/file_kinds.h"
#include "core/removal.h"
#include "core/text.h"
#include "pictures/bitmap.h"
#include "pictures/convert.h"
#include "storage/file_jobs.h"
#include "storage/files_exchange.h"
#include "storage/game_audio.h"
#include "storage/storage.h"
#include "storage/zl_file.h"
#include "words/storage.h"

#include <algorithm>
#include <atomic>
#include <map>

namespace kestrova
{

namespace
{

/// How a file stands in the stored folder. A later form wins over an earlier one of the same name.
enum class StoredAs { Plain, Deflated, Jpeg };

struct StoredFile {
    ReadyFile ready;
    StoredAs form = StoredAs::Plain;
    std::uint64_t storedSize = 0;
    std::optional<ReadyFile> under; ///< a plain file that this one replaces
    /// False when the load picture is not a picture; the stored files are left alone.
    bool converted = true;
};

/// The folder itself, or the old one of an exchange that was killed between its two renames.
Path FolderAsItStands(const Path& folder)
{
    const Path place = ResolvePath(folder);
    if (platform::FactsOf(place).kind == platform::FileKind::Missing)
        if (const Path old = BesideFiles(place, OnDisk::EndingOld); FolderExists(old))
            return old;
    return place;
}

/// Which form a stored name has, and its name in the Level Editor's folder.
StoredAs FormOf(const std::string& stored, std::string& name)
{
    if (EndsWithName(stored, OnDisk::ZlExtension)) {
        name = StripExtension(stored);
        return StoredAs::Deflated;
    }
    const bool jpeg = EqualNames(stored, OnDisk::LoadJpg);
    name = jpeg ? std::string{OnDisk::LoadBmp} : stored;
    return jpeg ? StoredAs::Jpeg : StoredAs::Plain;
}

Result<std::vector<StoredFile>> Examine(const Path& folder)
{
    const Path place = FolderAsItStands(folder);
    if (platform::FactsOf(place).kind != platform::FileKind::Folder)
        return MakeFailure(ErrorCode::Missing, TextOf(place));
    const auto stored = ListFiles(place, OnDisk::PatAll);
    if (!stored)
        return stored.Error();
    std::vector<StoredFile> files;
    std::map<std::string, std::size_t> byName;
    for (const Path& path : *stored) {
        StoredFile file;
        file.form = FormOf(path.filename().native(), file.ready.name);
        if (file.form == StoredAs::Deflated && EndsWithName(file.ready.name, OnDisk::ZlExtension))
            continue; // what comes out of a stream of a stream is nothing that a game reads
        if (file.ready.name.empty())
            return MakeFailure(ErrorCode::Damaged, TextOf(path));
        const platform::FileFacts facts = platform::FactsOf(path);
        file.ready.path = path;
        file.ready.size = file.storedSize = facts.size;
        file.ready.modifiedNs = facts.modifiedNs;
        const auto [known, isNew] = byName.emplace(FoldCase(file.ready.name), files.size());
        if (isNew) {
            files.push_back(std::move(file));
            continue;
        }
        StoredFile& other = files[known->second];
        if (file.form < other.form) {
            if (file.form == StoredAs::Plain)
                other.under = file.ready;
            other.ready.name = file.ready.name; // an overwrite keeps the spelling
        } else {
            if (other.form == StoredAs::Plain && file.form != StoredAs::Plain)
                file.under = other.ready;
            file.ready.name = other.ready.name;
            other = std::move(file);
        }
    }
    return files;
}

/// In listing order; a load picture that could not be converted stays what it was.
std::vector<ReadyFile> InOrder(std::vector<StoredFile> files)
{
    std::vector<ReadyFile> ready;
    for (StoredFile& file : files) {
        if (file.converted) {
            ready.push_back(std::move(file.ready));
            continue;
        }
        if (file.under)
            ready.push_back(*file.under);
        file.ready.name = file.ready.path.filename().native();
        ready.push_back(std::move(file.ready));
    }
    SortByListing(ready);
    return ready;
}

/// Free bytes shared by the jobs of all cores.
class SpaceLeft
{
public:
    explicit SpaceLeft(std::uint64_t bytes) : left_(bytes) {}
    [[nodiscard]] std::uint64_t Now() const { return left_; }
    Status Take(std::uint64_t bytes, const Path& file)
    {
        std::uint64_t left = left_;
        while (left >= bytes)
            if (left_.compare_exchange_weak(left, left - bytes))
                return {};
        return MakeFailure(ErrorCode::NoSpace, TextOf(file),
                           std::make_error_code(std::errc::no_space_on_device));
    }

private:
    std::atomic<std::uint64_t> left_;
};

/// Nobody else looks into the staging folder: the file is written under its own name at once.
Status ExpandInto(ReadyFile& file, const Path& target, SpaceLeft& space)
{
    const auto written = [&](const std::error_code& failure) {
        return failure ? Status{MakeFailure(ErrorCode::CannotWrite, TextOf(file.path), failure)}
                       : Status{};
    };
    platform::File output;
    if (auto status = written(platform::File::CreateNew(target, output)); !status)
        return status;
    const auto write = [&](std::string_view piece) {
        auto status = space.Take(piece.size(), file.path);
        return status ? written(output.Write(std::as_bytes(std::span(piece)))) : status;
    };
    if (auto status = StreamZl(file.path, space.Now(), write); !status)
        return status;
    if (auto status = written(output.Close()); !status)
        return status;
    // Some disks keep no times; the bytes are what counts.
    (void)platform::SetModified(target, file.modifiedNs);
    const platform::FileFacts facts = platform::FactsOf(target);
    file.path = target;
    file.size = facts.size;
    file.modifiedNs = facts.modifiedNs;
    file.moved = true;
    return {};
}

/// A picture that is none is no failure; a disk that cannot take the bitmap is.
Status ConvertInto(StoredFile& file, const Path& target)
{
    const auto status = ConvertJpegToBitmap(file.ready.path, target);
    file.converted = bool{status};
    if (!status)
        return status.Error().code == ErrorCode::CannotWrite ? status : Status{};
    (void)platform::SetModified(target, file.ready.modifiedNs); // as above
    const platform::FileFacts facts = platform::FactsOf(target);
    file.ready.path = target;
    file.ready.size = facts.size;
    file.ready.modifiedNs = facts.modifiedNs;
    file.ready.moved = true;
    return {};
}

FileJob JobFor(const StoredFile& file, std::function<Status()> run)
{
    const std::string name = TextOf(file.ready.path.filename());
    const std::string label = file.form == StoredAs::Deflated
                                  ? GetMsg(Msg::UnzippingPackage, {name})
                                  : GetMsg(Msg::UnstoreConvertingLoad);
    return {file.storedSize, label, std::move(run)};
}

Status PlanPicture(StoredFile& file)
{
    const auto bytes = ReadWholeFile(file.ready.path, maxZlContent);
    if (!bytes)
        return bytes.Error();
    const auto picture = DecodePicture(*bytes);
    file.converted = bool{picture};
    if (picture)
        file.ready.size = EncodeBitmap(*picture).size();
    return {};
}

Result<std::string> StoredContent(const ReadyFile& file)
{
    if (!EndsWithName(file.path.native(), OnDisk::ZlExtension))
        return ReadWholeFile(file.path, maxZlContent);
    const auto bytes = ZlExpander::OfThisThread().ExpandFile(file.path, maxZlContent);
    if (!bytes)
        return bytes.Error();
    return std::string{*bytes};
}

Status PlanStream(StoredFile& file)
{
    const auto size = ExpandedSizeOfZl(file.ready.path, maxZlContent);
    if (!size)
        return size.Error();
    file.ready.size = *size;
    return {};
}

} // namespace

Result<std::vector<ReadyFile>> PlanLevelFiles(const Path& folder)
{
    auto files = Examine(folder);
    if (!files)
        return files.Error();
    std::vector<FileJob> jobs;
    for (StoredFile& file : *files)
        if (file.form != StoredAs::Plain)
            jobs.push_back(JobFor(file, [&file] {
                return file.form == StoredAs::Jpeg ? PlanPicture(file) : PlanStream(file);
            }));
    if (const auto status = RunFileJobs(std::move(jobs), nullptr); !status)
        return status.Error();
    std::vector<ReadyFile> ready = InOrder(std::move(*files));
    if (AnyMp3(ready))
        NameAsWaves(ready, StoredContent);
    return ready;
}

Result<std::vector<ReadyFile>> ReadyLevelFiles(Host& host, Machine& machine,
                                               const SoundConverter& converter, const Path& folder,
                                               const Path& staging, bool mp3ToWave,
                                               ProgressScope* progress)
{
    auto files = Examine(folder);
    if (!files)
        return files.Error();
    const Path place = ResolvePath(staging);
    if (auto status = ClearPlace(place); !status)
        return status.Error();
    const auto free = machine.FreeSpace(place);
    if (!free)
        return free.Error();
    SpaceLeft space{*free};
    std::vector<FileJob> jobs;
    for (StoredFile& file : *files)
        if (file.form != StoredAs::Plain)
            jobs.push_back(JobFor(file, [&file, &place, &space] {
                const Path target = place / file.ready.name;
                return file.form == StoredAs::Jpeg ? ConvertInto(file, target)
                                                   : ExpandInto(file.ready, target, space);
            }));
    const auto fails = [&](const Failure& failure) {
        (void)ClearPlace(place); // the first failure is the one to tell; a rest goes next time
        return failure;
    };
    const auto isMp3 = [](const StoredFile& file) { return IsMp3Name(file.ready.name); };
    const bool decodes = mp3ToWave && std::any_of(files->begin(), files->end(), isMp3);
    if (!jobs.empty()) {
        Status status = MakeFolders(place);
        if (status)
            status = RunFileJobs(std::move(jobs), progress);
        if (!status)
            return fails(status.Error());
    }
    std::vector<ReadyFile> ready = InOrder(std::move(*files));
    if (decodes)
        if (const auto decoded = DecodeReadyFiles(host, converter, ready, place); !decoded)
            return fails(decoded.Error());
    return ready;
}

} // namespace kestrova
