#include "upkeep/change_compression.h"

#include "archive/file_jobs.h"
#include "archive/level_folders.h"
#include "archive/level_sizes.h"
#include "archive/stored_form.h"
#include "archive/zl_file.h"
#include "catalogue/message.h"
#include "core/look.h"
#include "pictures/convert.h"
#include "pictures/picture.h"

#include <atomic>

namespace kestrova
{

namespace
{

/// One file on its way from one form to the other.
struct Change {
    Path source;
    Path target;
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

/// The files that have the wrong form. Sound and level files are deflated, streams expanded.
Result<std::vector<Change>> ChangesIn(const Path& folder, bool compress)
{
    const auto files = ListFiles(folder, RowText(compress ? Msg::PatAll : Msg::PatternZl));
    if (!files)
        return files.Error();
    std::vector<Change> changes;
    for (const Path& file : *files) {
        const std::string name = file.filename().native();
        if (compress ? !IsCompressed(name) : StripExtension(name).empty())
            continue;
        changes.push_back(
            {file, folder / (compress ? name + GetMsg(Msg::ZlExtension) : StripExtension(name))});
    }
    return changes;
}

/// The target stands whole when it answers; the source is still there.
Status Convert(Session& session, const Change& change, bool compress)
{
    if (compress)
        return CompressToZl(change.source, change.target);
    const auto free = session.machine.FreeSpace(change.target.parent_path());
    if (!free)
        return free.Error();
    return ExpandZl(change.source, change.target, std::min(*free, maxZlContent));
}

/// Asks about each file that failed. False ends the work.
bool AskAboutFailures(Session& session, const std::vector<Change>& changes, bool compress)
{
    const std::string word = GetMsg(compress ? Msg::WordCompression : Msg::WordDecompression);
    for (const Change& change : changes)
        if (!change.outcome &&
            !session.host.AskYesNo(GetMsg(Msg::AskErrorChangingFile,
                                          {word, TextOf(change.source) + std::string{lineBreak}})))
            return false;
    return true;
}

/// Until the new files are on the disk the old ones stay.
bool DropSources(const std::vector<Change>& changes, const Path& folder)
{
    if (platform::SyncFileSystem(folder))
        return false;
    bool dropped = true;
    for (const Change& change : changes)
        if (change.outcome)
            dropped = !platform::Unlink(change.source) && dropped;
    return dropped;
}

bool ChangeFiles(Session& session, const Path& folder, bool compress, ProgressScope& progress)
{
    auto found = ChangesIn(folder, compress);
    if (!found)
        return TellFolderNotRead(session, found.Error());
    std::vector<Change>& changes = *found;
    if (changes.empty())
        return true;
    const auto zip = session.host.BeginProgress(
        ProgressWindow::Zip, GetMsg(compress ? Msg::DeflatingFiles : Msg::ExpandingFiles));
    StopBetweenFiles shown{*zip, progress};
    const std::string word = GetMsg(compress ? Msg::WordCompression : Msg::WordDecompression);
    std::vector<FileJob> jobs;
    for (Change& change : changes)
        jobs.push_back({FileSize(change.source),
                        word + GetMsg(Msg::ChangingFile, {TextOf(change.source.filename())}),
                        [&session, &change, &shown, compress]() -> Status {
                            change.outcome = shown.Stopped()
                                                 ? Status{MakeFailure(ErrorCode::Stopped, {})}
                                                 : Convert(session, change, compress);
                            return {}; // one that fails does not hold up the others
                        }});
    const auto ran = RunFileJobs(std::move(jobs), &shown);
    if (!ran || !DropSources(changes, folder)) {
        session.host.Tell(Tone::Error, GetMsg(Msg::ErrorDroppingOldForm, {TextOf(folder)}));
        return false;
    }
    return !shown.Stopped() && AskAboutFailures(session, changes, compress);
}

/// The load picture; one that cannot be converted stays as it is.
void ChangeLoadPicture(const Path& folder, bool compress, ProgressScope& progress)
{
    const Path bitmap = ResolvePath(folder / RowText(Msg::LoadBmp));
    const Path jpeg = ResolvePath(folder / RowText(Msg::LoadJpg));
    const Path& source = compress ? bitmap : jpeg;
    const Path& target = compress ? jpeg : bitmap;
    if (!FileExists(source))
        return;
    progress.SetLabel(GetMsg(compress ? Msg::StoreConvertingLoad : Msg::ConvertingLoadBack));
    progress.Step();
    const bool converted = static_cast<bool>(compress ? ConvertBitmapToJpeg(source, target)
                                                      : ConvertJpegToBitmap(source, target));
    const auto bytes = converted ? ReadWholeFile(target) : Result<std::string>{std::string{}};
    if (converted && bytes && DecodePicture(*bytes) && !platform::SyncFileSystem(folder))
        (void)DeleteFile(source); // while both are there the level reads the same
}

/// The levels, one after the other; False when it was ended before the last.
bool ChangeLevels(Session& session, const AudioStep& audio, ProgressScope& progress)
{
    const std::size_t count = session.archive.levels.size();
    const bool compress = session.archive.header.compressLevels;
    for (std::size_t i = 0; i < count; ++i) {
        const LevelRecord& level = session.archive.levels[i];
        const std::string name{Trim(level.levelName)};
        progress.SetBar(i, count);
        progress.SetLabel(GetMsg(Msg::ChangingLevel) + name);
        if (!progress.Step())
            return false;
        if (level.cdNumber != 0 || level.levelCode == originalCode)
            continue;
        const Path folder =
            ResolvePath(InFolder(LevelHomeOf(session, level.levelCode), RowText(Msg::DirFiles)));
        const auto isThere = IsFolder(folder);
        if (!isThere)
            return TellFolderNotRead(session, isThere.Error());
        if (!*isThere)
            continue;
        if ((audio && !audio(name, folder)) || !ChangeFiles(session, folder, compress, progress))
            return false;
        ChangeLoadPicture(folder, compress, progress);
    }
    progress.SetBar(count, count);
    return true;
}

} // namespace

bool ChangeCompression(Session& session, const AudioStep& audio)
{
    const double before = session.archive.header.mainFolderSize;
    bool all = false;
    {
        const auto progress =
            session.host.BeginProgress(ProgressWindow::Progress, GetMsg(Msg::ChangingCompression));
        progress->AllowStop();
        all = ChangeLevels(session, audio, *progress);
    }
    RecomputeArchiveSize(session, false);
    session.list.Refresh();
    session.host.Tell(
        Tone::Plain,
        GetMsg(Msg::CompressionChanged,
               {FormatSize(session.archive.header.mainFolderSize) + std::string{lineBreak},
                FormatSize(before) + std::string{lineBreak}}),
        all ? std::string{} : GetMsg(Msg::CompressionPartlyChanged));
    return all;
}

void OfferChangeCompression(Session& session, const ArchiveHeader& before, const AudioStep& audio)
{
    const ArchiveHeader& now = session.archive.header;
    const bool changed =
        now.compressLevels != before.compressLevels || (audio && now.wavInMp3 != before.wavInMp3);
    if (changed && session.host.AskYesNo(GetMsg(Msg::AskChangeCompression, {lineBreak, lineBreak})))
        ChangeCompression(session, audio);
}

} // namespace kestrova
