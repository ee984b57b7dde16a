#include "upkeep/equal_check.h"

#include "archive/archive_saving.h"
#include "archive/equal_levels.h"
#include "archive/level_folders.h"
#include "formats/level_folder.h"
#include "session/telling.h"
#include "words/upkeep.h"

namespace kestrova
{

namespace
{

std::string Quoted(const std::string& text, int lines)
{
    std::string quoted = '"' + text + '"';
    for (; lines > 0; --lines)
        quoted += lineBreak;
    return quoted;
}

/// A level on a disc that the hard disk has no `tr4.inf` of.
bool NeedsDisc(const Folders& folders, const Archive& archive, std::size_t index)
{
    return archive.levels[index].cdNumber != 0 && !ReadTr4Inf(folders, archive, index);
}

} // namespace

bool FindEqualLevels(Host& host, const Folders& folders, const Archive& archive,
                     const std::function<bool(const EqualPair&)>& found)
{
    const std::size_t count = archive.levels.size();
    const std::string scanning = GetMsg(Msg::EqualScanning);
    const std::string ofAll = GetMsg(Msg::EqualOfLevels, {std::to_string(count)});
    const auto progress = host.BeginProgress(ProgressWindow::Progress, scanning);
    const EqualTr4Index index{folders, archive, progress.get()};
    if (!index.State())
        return TellFolderNotRead(host, index.State().Error());

    for (std::size_t i = 0; i < count; ++i) {
        progress->SetLabel(scanning + " " + std::to_string(i + 1) + ofAll);
        std::vector<Tr4Entry> files = index.FilesOf(i);
        if (files.empty() && NeedsDisc(folders, archive, i)) {
            const auto home = LevelFolderOf(folders, archive, archive.levels[i].levelCode);
            if (!home) {
                TellFailure(host, GetMsg(Msg::EqualCdNotAvailable), home.Error());
                return false;
            }
            auto scanned = ScanTr4Files(InFolder(*home, OnDisk::DirFiles));
            if (!scanned)
                return TellFolderNotRead(host, scanned.Error());
            files = std::move(*scanned);
        }
        if (const auto equal = index.Find(files, i);
            equal && !found({i, equal->level, equal->name}))
            break;
        progress->SetBar(i + 1, count);
        progress->Step();
    }
    return true;
}

bool CheckEqualLevels(Host& host, const Folders& folders, const Archive& archive)
{
    if (!HasArchive(host, archive))
        return false;
    std::size_t equal = 0;
    const bool scanned = FindEqualLevels(host, folders, archive, [&](const EqualPair& pair) {
        ++equal;
        const std::string other{Trim(archive.levels[pair.other].levelName)};
        return host.AskYesNo(GetMsg(Msg::AskEqualFound, {Quoted(pair.file, 1), Quoted(other, 2)}));
    });
    if (scanned)
        host.Tell(Tone::Plain, equal == 0
                                   ? GetMsg(Msg::EqualNone, {lineBreak})
                                   : GetMsg(Msg::EqualCount, {lineBreak, std::to_string(equal)}));
    return scanned;
}

} // namespace kestrova
