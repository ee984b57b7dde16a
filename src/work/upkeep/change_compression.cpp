#include "upkeep/change_compression.h"

#include "archive/level_folders.h"
#include "archive/level_sizes.h"
#include "core/file_kinds.h"
#include "core/look.h"
#include "core/size_words.h"
#include "core/staged_file.h"
#include "formats/level_folder.h"
#include "pictures/bitmap.h"
#include "pictures/convert.h"
#include "pictures/jpeg.h"
#include "session/telling.h"
#include "storage/compressed_kinds.h"
#include "storage/file_jobs.h"
#include "storage/files_exchange.h"
#include "storage/form_clashes.h"
#include "storage/stored_hashes.h"
#include "storage/zl_file.h"
#include "upkeep/file_names.h"
#include "words/storage.h"
#include "words/upkeep.h"

#include <atomic>

namespace kestrova
{

namespace
{

/// One file on its way from one form to the other.
struct FormChange {
    Path source;
    Path target;
    bool isMade = false; ///< a killed run left the target whole beside its source
    Status outcome{};
};

/// Files under way are brought to their end, and what is converted stays so: Stop counts between
/// files.
class StopBetweenFiles : public ProgressScope
{
public:
    explicit StopBetweenFiles(ProgressScope& shown, ProgressScope& stop)
        : shown_(shown), stop_(stop)
    {
    }
    [[nodiscard]] bool Stopped() const { return stopped_; }
    void SetLabel(const std::string& text) override { shown_.SetLabel(text); }
    void SetBar(std::uint64_t done, std::uint64_t total) override { shown_.SetBar(done, total); }
    void AllowStop() override {}
    bool Step() override
    {
        const bool goesOn = shown_.Step();
        if (!stop_.Step() || !goesOn)
            stopped_ = true;
        return true;
    }

private:
    std::atomic<bool> stopped_{false}; ///< looked at by the workers
    ProgressScope& shown_;
    ProgressScope& stop_;
};

/// The changes that take no other file's place; the rest is named in `kept`.
std::vector<FormChange> WithoutClashes(std::vector<FormChange> changes,
                                       const std::vector<Path>& files, bool compress,
                                       std::vector<std::string>& kept)
{
    NamesInUse standing;
    NamesInUse coming;
    for (const Path& file : files)
        standing.Add(file.filename().native());
    for (const FormChange& change : changes)
        coming.Add(change.target.filename().native());
    std::vector<FormChange> free;
    for (FormChange& change : changes) {
        const std::string name = change.target.filename().native();
        const int taken = standing.Uses(name);
        if (coming.Uses(name) == 1 && taken == 1) {
            const Path there = ResolvePath(change.target);
            change.isMade =
                compress ? StreamHolds(there, change.source) : StreamHolds(change.source, there);
        }
        if (coming.Uses(name) == 1 && (taken == 0 || change.isMade))
            free.push_back(std::move(change));
        else
            kept.push_back(TextOf(change.source.filename()));
    }
    return free;
}

/// The files that have the wrong form. Sound and level files are deflated, streams expanded.
Result<std::vector<FormChange>> ChangesIn(const Path& folder, bool compress,
                                          std::vector<std::string>& kept)
{
    const auto files = ListFiles(folder, OnDisk::PatAll);
    if (!files)
        return files.Error();
    std::vector<FormChange> changes;
    for (const Path& file : *files) {
        const std::string name = file.filename().native();
        const bool isStream = MatchesPattern(name, OnDisk::PatternZl);
        if (compress ? !IsCompressed(name) : !isStream || StripExtension(name).empty())
            continue;
        changes.push_back({file, folder / (compress ? name + std::string{OnDisk::ZlExtension}
                                                    : StripExtension(name))});
    }
    return WithoutClashes(std::move(changes), *files, compress, kept);
}

/// The target stands whole when it answers; the source is still there.
Status Convert(Machine& machine, const FormChange& change, bool compress)
{
    if (change.isMade)
        return {};
    if (compress)
        return CompressToZl(change.source, change.target);
    const auto free = machine.FreeSpace(change.target.parent_path());
    if (!free)
        return free.Error();
    return ExpandZl(change.source, change.target, std::min(*free, maxZlContent));
}

/// Asks about each file that failed. False ends the work.
bool AskAboutFailures(Host& host, const std::vector<FormChange>& changes, bool compress)
{
    const std::string word = GetMsg(compress ? Msg::WordCompression : Msg::WordDecompression);
    for (const FormChange& change : changes)
        if (!change.outcome &&
            !host.AskYesNo(GetMsg(Msg::AskErrorChangingFile,
                                  {word, TextOf(change.source) + std::string{lineBreak}})))
            return false;
    return true;
}

/// Until the new files are on the disk the old ones stay.
bool DropSources(const std::vector<FormChange>& changes, const Path& folder)
{
    if (platform::SyncFileSystem(folder))
        return false;
    bool dropped = true;
    for (const FormChange& change : changes)
        if (change.outcome)
            dropped = !platform::Unlink(change.source) && dropped;
    return dropped;
}

bool ChangeFiles(Host& host, Machine& machine, const Path& folder, bool compress,
                 ProgressScope& progress, std::vector<std::string>& kept)
{
    auto found = ChangesIn(folder, compress, kept);
    if (!found)
        return TellFolderNotRead(host, found.Error());
    std::vector<FormChange>& changes = *found;
    if (changes.empty())
        return true;
    const auto zip = host.BeginProgress(
        ProgressWindow::Zip, GetMsg(compress ? Msg::DeflatingFiles : Msg::ExpandingFiles));
    StopBetweenFiles shown{*zip, progress};
    const std::string word = GetMsg(compress ? Msg::WordCompression : Msg::WordDecompression);
    std::vector<FileJob> jobs;
    for (FormChange& change : changes)
        jobs.push_back({FileSize(change.source),
                        word + GetMsg(Msg::ChangingFile, {TextOf(change.source.filename())}),
                        [&machine, &change, &shown, compress]() -> Status {
                            change.outcome = shown.Stopped()
                                                 ? Status{MakeFailure(ErrorCode::Stopped, {})}
                                                 : Convert(machine, change, compress);
                            return {}; // one that fails does not hold up the others
                        }});
    const auto ran = RunFileJobs(std::move(jobs), &shown);
    if (!ran || !DropSources(changes, folder)) {
        host.Tell(Tone::Error, GetMsg(Msg::ErrorDroppingOldForm, {TextOf(folder)}));
        return false;
    }
    return !shown.Stopped() && AskAboutFailures(host, changes, compress);
}

/// The picture's bytes in its other form; a failure for what is no picture.
Result<std::string> OtherForm(const Path& picture, bool compress)
{
    const auto content = ReadPictureFile(picture);
    if (!content)
        return content.Error();
    return compress ? EncodeJpeg(*content) : EncodeBitmap(*content);
}

/// The load picture; one that cannot be converted stays as it is, and so does one beside another of
/// the other form. False when the folder cannot be listed.
Status ChangeLoadPicture(const Path& folder, bool compress, ProgressScope& progress,
                         std::vector<std::string>& kept, int& made)
{
    const Path bitmap = folder / OnDisk::LoadBmp;
    const Path jpeg = folder / OnDisk::LoadJpg;
    const auto sources = CaseTwins(compress ? bitmap : jpeg);
    const auto targets = CaseTwins(compress ? jpeg : bitmap);
    if (!sources || !targets)
        return sources ? targets.Error() : sources.Error();
    if (sources->empty())
        return {};
    progress.SetLabel(GetMsg(compress ? Msg::StoreConvertingLoad : Msg::UnstoreConvertingLoad));
    progress.Step();
    const Path& source = sources->front();
    const auto bytes = OtherForm(source, compress);
    if (!bytes || !DecodePicture(*bytes))
        return {};
    const bool isMade =
        targets->size() == 1 && ReadWholeFile(targets->front()).ValueOr({}) == *bytes;
    if (sources->size() > 1 || (!targets->empty() && !isMade)) {
        kept.push_back(TextOf(source.filename()));
        return {};
    }
    if ((isMade || WriteWholeFile(compress ? jpeg : bitmap, *bytes)) &&
        !platform::SyncFileSystem(folder)) {
        (void)DeleteFile(source); // while both are there the level reads the same
        ++made;
    }
    return {};
}

/// One level of the list; False when it was ended, or could not be done.
bool ChangeLevel(Host& host, Machine& machine, const Folders& folders, const Archive& archive,
                 const LevelRecord& level, const AudioStep& audio, ProgressScope& progress,
                 int& pictures)
{
    const std::string name{Trim(level.levelName)};
    const Path folder =
        ResolvePath(InFolder(LevelHomeOf(folders, level.levelCode), OnDisk::DirFiles));
    const auto isThere = IsFolder(folder);
    if (!isThere)
        return TellFolderNotRead(host, isThere.Error());
    if (!*isThere)
        return true;
    const StoredWatch watch{LevelHomeOf(folders, level.levelCode), [&] { return progress.Step(); }};
    std::vector<std::string> kept;
    if ((audio && !audio(name, folder)) ||
        !ChangeFiles(host, machine, folder, archive.header.compressLevels, progress, kept))
        return false;
    if (const auto picture =
            ChangeLoadPicture(folder, archive.header.compressLevels, progress, kept, pictures);
        !picture)
        return TellFolderNotRead(host, picture.Error());
    TellKeptForms(host, kept);
    return true;
}

/// The levels, one after the other; False when it was ended before the last.
bool ChangeLevels(Host& host, Machine& machine, const Folders& folders, const Archive& archive,
                  const AudioStep& audio, ProgressScope& progress, int& pictures)
{
    const std::size_t count = archive.levels.size();
    for (std::size_t i = 0; i < count; ++i) {
        const LevelRecord& level = archive.levels[i];
        progress.SetBar(i, count);
        progress.SetLabel(GetMsg(Msg::ChangingLevel) + std::string{Trim(level.levelName)});
        if (!progress.Step())
            return false;
        if (level.cdNumber == 0 && level.levelCode != originalCode &&
            !ChangeLevel(host, machine, folders, archive, level, audio, progress, pictures))
            return false;
    }
    progress.SetBar(count, count);
    return true;
}

} // namespace

bool ChangeCompression(const ArchiveParts& parts, const AudioStep& audio)
{
    const double before = parts.archive.header.mainFolderSize;
    bool all = false;
    int pictures = 0;
    {
        const auto progress =
            parts.host.BeginProgress(ProgressWindow::Progress, GetMsg(Msg::ChangingCompression));
        progress->AllowStop();
        all = ChangeLevels(parts.host, parts.machine, parts.folders, parts.archive, audio,
                           *progress, pictures);
    }
    DoneOrTold(parts.host, RecomputeArchiveSize(parts, false));
    parts.list.Refresh();
    std::string details = all ? std::string{} : GetMsg(Msg::CompressionPartlyChanged);
    if (pictures > 0 && parts.archive.header.compressLevels)
        details += (details.empty() ? "" : " ") +
                   GetMsg(Msg::PicturesCompressed, {std::to_string(pictures)});
    parts.host.Tell(
        Tone::Plain,
        GetMsg(Msg::CompressionChanged,
               {FormatSize(parts.archive.header.mainFolderSize) + std::string{lineBreak},
                FormatSize(before) + std::string{lineBreak}}),
        details);
    return all;
}

bool ChangeCompressionOf(const ArchiveParts& parts, LevelCode code, const AudioStep& audio)
{
    const std::ptrdiff_t index = FindLevel(parts.archive, code);
    if (index < 0 || code == originalCode)
        return false;
    const LevelRecord level = parts.archive.levels[static_cast<std::size_t>(index)];
    if (!DoneOrTold(parts.host, GuardLevelOnCd(level)))
        return false;
    bool done = false;
    {
        const auto progress =
            parts.host.BeginProgress(ProgressWindow::Progress, GetMsg(Msg::ChangingCompression));
        progress->AllowStop();
        int pictures = 0;
        done = ChangeLevel(parts.host, parts.machine, parts.folders, parts.archive, level, audio,
                           *progress, pictures);
    }
    RefreshLevelSizes(parts, code);
    return done;
}

void OfferChangeCompression(const ArchiveParts& parts, const ArchiveHeader& before,
                            const AudioStep& audio)
{
    const ArchiveHeader& now = parts.archive.header;
    const bool changed =
        now.compressLevels != before.compressLevels || (audio && now.wavInMp3 != before.wavInMp3);
    if (changed && parts.host.AskYesNo(GetMsg(Msg::AskChangeCompression, {lineBreak, lineBreak})))
        ChangeCompression(parts, audio);
}

} // namespace kestrova
