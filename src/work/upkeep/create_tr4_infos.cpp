#include "upkeep/create_tr4_infos.h"

#include "archive/archive_saving.h"
#include "archive/level_folders.h"
#include "archive/tr4_index.h"
#include "core/file_kinds.h"
#include "core/look.h"
#include "core/parallel.h"
#include "formats/level_folder.h"
#include "session/telling.h"
#include "storage/zl_file.h"
#include "words/upkeep.h"

#include <limits>

namespace kestrova
{

namespace
{

/// The entries of files that are stored deflated, as they would be after their expansion: the size
/// is found in memory, the time is the stream's, since that is its source's.
Result<std::vector<Tr4Entry>> ScanDeflated(const std::vector<Path>& streams,
                                           ProgressScope& progress)
{
    static_assert(maxZlContent <= std::numeric_limits<std::int32_t>::max());
    std::vector<Tr4Entry> entries(streams.size());
    std::vector<Status> outcomes(streams.size());
    const auto scan = [&](std::size_t i) {
        const auto size = ExpandedSizeOfZl(streams[i], maxZlContent);
        if (!size) {
            outcomes[i] = size.Error();
            return;
        }
        entries[i] = Tr4EntryOf(StripExtension(streams[i].filename().native()), streams[i]);
        entries[i].size = static_cast<std::int32_t>(*size);
    };
    RunOnAllCores(streams.size(), scan, [&] { return progress.Step(), true; });
    for (const Status& outcome : outcomes)
        if (!outcome)
            return outcome.Error();
    return entries;
}

Result<std::vector<Tr4Entry>> ScanLevel(const Path& folder, ProgressScope& progress)
{
    auto entries = ScanTr4Files(folder);
    if (!entries || !entries->empty())
        return entries;
    const auto streams = ListFiles(folder, OnDisk::PatTr4Zl);
    return streams ? ScanDeflated(*streams, progress) : streams.Error();
}

/// The levels without a folder, in one box that no number of them makes too long.
void TellVanished(Host& host, std::vector<std::string> names)
{
    constexpr std::size_t most = 20;
    if (names.empty())
        return;
    const std::size_t count = names.size();
    names.resize(std::min(count, most));
    const std::string more =
        count > most ? GetMsg(Msg::Tr4InfosMoreVanished, {std::to_string(count - most)}) : "";
    host.Tell(Tone::Error, GetMsg(Msg::Tr4InfosVanished, {std::to_string(count)}),
              Join(names, ", ") + more);
}

} // namespace

bool CreateTr4Infos(Host& host, const Folders& folders, const Archive& archive)
{
    if (!HasArchive(host, archive))
        return false;
    const std::size_t count = archive.levels.size();
    const auto progress =
        host.BeginProgress(ProgressWindow::Progress, GetMsg(Msg::CreatingTr4Infos));
    std::vector<std::string> vanished;
    bool all = true;
    for (std::size_t i = 0; i < count; ++i) {
        progress->SetBar(i, count);
        progress->Step();
        if (!IsFree(Tr4InfPath(folders, archive, i)).ValueOr(false))
            continue; // one that cannot be looked at is not written over
        const LevelRecord& level = archive.levels[i];
        const auto home = LevelFolderOf(folders, archive, level.levelCode);
        if (!home) {
            TellFailure(host, GetMsg(Msg::Tr4InfosCdMissing), home.Error());
            return false;
        }
        const std::string name{Trim(level.levelName)};
        const Path files = InFolder(*home, OnDisk::DirFiles);
        const auto isThere = IsFolder(files);
        if (!isThere)
            return TellFolderNotRead(host, isThere.Error());
        if (!*isThere) {
            vanished.push_back(Readable(name));
            continue;
        }
        const auto entries = ScanLevel(files, *progress);
        if (!entries) {
            TellFailure(host, GetMsg(Msg::Tr4InfosErrorDecompressing) + name + "]",
                        entries.Error());
            all = false; // the others are worth no less
            continue;
        }
        if (entries->empty())
            continue;
        if (const auto status = WriteTr4Inf(folders, archive, i, *entries); !status) {
            TellFailure(host, GetMsg(Msg::Tr4InfosErrorWriting, {name}), status.Error());
            return false;
        }
    }
    progress->SetBar(count, count);
    TellVanished(host, vanished);
    return all && vanished.empty();
}

} // namespace kestrova
