#include "intake/left_intake.h"

#include "archive/level_folders.h"
#include "core/look.h"
#include "core/removal.h"
#include "core/staged_file.h"
#include "core/text.h"
#include "intake/file_names.h"
#include "intake/unpacking_place.h"
#include "levels/unfinished_intake.h"
#include "packages/unpacked_files.h"
#include "session/telling.h"
#include "session/tree_progress.h"
#include "words/intake.h"
#include "words/levels.h"

#include <algorithm>

namespace kestrova
{

namespace
{

bool IsLevelOfArchive(const Folders& folders, const Archive& archive, const Path& folder)
{
    return std::any_of(archive.levels.begin(), archive.levels.end(), [&](const LevelRecord& level) {
        return LevelHomeOf(folders, level.levelCode) == folder;
    });
}

} // namespace

IntakeNote::IntakeNote(const Folders& folders)
    : file_(InFolder(folders.program, OnDisk::IntakeNote))
{
}

void IntakeNote::Write(const Path& levelFolder) const
{
    (void)WriteRecordFile(file_, levelFolder.native());
}

void IntakeNote::Drop() const
{
    (void)DeleteFile(file_);
}

Path IntakeNote::LevelFolder() const
{
    constexpr std::uint64_t longestPath = 65536;
    const auto text = ReadWholeFile(file_, longestPath);
    return text ? Path{*text} : Path{};
}

void OfferLeftIntake(Host& host, const Folders& folders, const Archive& archive)
{
    const IntakeNote note{folders};
    const Path folder = note.LevelFolder();
    if (folder.empty() || !archive.Loaded())
        return;
    (void)ClearPlace(UnpackingFolder(folders)); // the next package clears what stays
    const auto isThere = IsFolder(folder);
    if (!isThere)
        return; // the next start asks
    if (*isThere && !IsLevelOfArchive(folders, archive, folder)) {
        // It may belong to another archive; that one's next start asks.
        if (folder.parent_path() != Path{Trim(archive.header.secondaryFolder)})
            return;
        const auto whole = WholeIntakeIn(folder);
        if (!whole)
            return;
        // A whole level that could not be put on the list is no rest.
        if (!*whole && host.AskYesNo(GetMsg(
                           Msg::AskLeftIntake,
                           {TextOf(folder), std::string{lineBreak} + std::string{lineBreak}}))) {
            const auto wait =
                host.BeginProgress(ProgressWindow::Wait, GetMsg(Msg::RemovingNewLevelFolder));
            DoneOrTold(host, RemoveTreeWithProgress(folder, *wait));
        }
    }
    note.Drop();
}

} // namespace kestrova
