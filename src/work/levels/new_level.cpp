#include "levels/new_level.h"

#include "archive/archive_saving.h"
#include "archive/level_folders.h"
#include "archive/level_sizes.h"
#include "archive/library_notes.h"
#include "archive/set_aside.h"
#include "core/look.h"
#include "core/removal.h"
#include "core/staged_file.h"
#include "levels/unfinished_intake.h"
#include "platform/clock.h"
#include "session/telling.h"
#include "session/tree_progress.h"
#include "words/common.h"
#include "words/levels.h"
#include "words/library.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// The name of the new level's folder is free afterwards, or an empty folder has it. What an older
/// list may have known is set aside whole, and named.
bool MakeWay(const ArchiveParts& parts, const Path& folder)
{
    const auto fail = [&](const Failure& failure) {
        TellFailure(parts.host, GetMsg(Msg::CannotSetAside, {TextOf(folder)}), failure);
        return false;
    };
    const auto isThere = IsFolder(folder);
    if (!isThere)
        return fail(isThere.Error());
    if (!*isThere)
        return true;
    const auto unfinished = IsUnfinishedIntake(parts.folders, parts.archive, folder);
    if (!unfinished)
        return fail(unfinished.Error());
    if (*unfinished)
        if (const auto cleared = ClearUnfinishedIntake(folder); !cleared)
            return fail(cleared.Error());
    if (*unfinished)
        return true;
    const auto holds = HoldsAnything(ResolvePath(folder));
    if (!holds)
        return fail(holds.Error());
    if (!*holds)
        return true;
    const auto names = SetAside(parts.machine, folder);
    if (!names)
        return fail(names.Error());
    for (const Path& name : *names)
        parts.host.Tell(Tone::Warning,
                        GetMsg(Msg::FolderSetAside, {TextOf(folder.filename()), TextOf(name)}));
    return true;
}

} // namespace

bool BeginNewLevel(const ArchiveParts& parts, LevelRecord& level)
{
    if (!HasArchive(parts.host, parts.archive) ||
        !DoneOrTold(parts.host, ArchiveFolderIsThere(parts.archive)))
        return false;
    level = LevelRecord{};
    level.levelCode = NextLevelCode(parts.archive);
    const Path folder = LevelHomeOf(parts.folders, level.levelCode);
    if (!MakeWay(parts, folder))
        return false;
    const Status made = MakeLevelSubfolders(folder);
    if (made) {
        // Without the mark a killed intake's folder would only be set aside.
        (void)WriteWholeFile(IntakeMark(folder), {}, false);
        return true;
    }
    TellFailure(parts.host,
                GetMsg(Msg::CannotCreateLevelFolders) +
                    Readable(Trim(parts.archive.header.secondaryFolder)) +
                    GetMsg(Msg::ClosingBracket),
                made.Error());
    if (FolderExists(folder))
        (void)RemoveTree(folder); // an empty folder may stay; the next level takes it
    return false;
}

namespace
{

/// Before the list knows the level: its number may have been another one's, whose notes must never
/// be taken for its own. Whatever fails here is told, and the level comes in without.
void NoteWhenItCame(const ArchiveParts& parts, LevelCode code)
{
    const auto noted =
        NoteAdded(parts.folders, parts.archive, code, parts.machine.NowNs() / platform::nsOfSecond);
    if (!noted)
        parts.host.Tell(Tone::Warning,
                        GetMsg(Msg::AddedNotNoted, {TextOf(LibraryFileOf(parts.folders))}),
                        noted.Error().reason);
}

void PutBehindTheOthers(Archive& archive, const LevelRecord& level)
{
    archive.levels.push_back(level);
    archive.header.mainFolderSize += level.filesSize;
    archive.header.secondaryFolderSize += level.extrasSize;
}

void DropMark(Host& host, const Path& folder)
{
    if (const auto dropped = DropIntakeMark(folder); !dropped)
        host.Tell(Tone::Warning, GetMsg(Msg::ErrorRemovingFile) + TextOf(IntakeMark(folder)),
                  dropped.Error().reason);
}

} // namespace

bool FinishNewLevel(const ArchiveParts& parts, const LevelRecord& level)
{
    const Archive before = parts.archive;
    PutBehindTheOthers(parts.archive, level);
    NoteWhenItCame(parts, level.levelCode);
    // From here on a start after a kill puts the level on the list.
    const Path folder = LevelHomeOf(parts.folders, level.levelCode);
    if (const auto whole = MarkIntakeWhole(folder, level); !whole) {
        TellFailure(parts.host, GetMsg(Msg::ErrorRemovingFile) + TextOf(IntakeMark(folder)),
                    whole.Error());
        parts.archive = before;
        return false;
    }
    if (!SaveArchiveOrPutBack(parts, before)) {
        MarkIntakeUnfinished(folder);
        return false;
    }
    DropMark(parts.host, folder);
    parts.list.Refresh();
    parts.list.Select(level.levelCode);
    return true;
}

void ListWholeLevels(const ArchiveParts& parts)
{
    // What cannot be looked at now is put on the list another time.
    const auto found = FindUnknownFolders(parts.archive);
    if (!found)
        return;
    for (const Path& folder : found->unlisted) {
        const auto level = WholeIntakeIn(folder);
        if (!level || !*level)
            continue;
        const Archive before = parts.archive;
        PutBehindTheOthers(parts.archive, **level);
        if (!SaveArchiveOrPutBack(parts, before))
            continue;
        DropMark(parts.host, folder);
        parts.host.Tell(Tone::Plain, GetMsg(Msg::WholeIntakeListed,
                                            {OnOneLine(Readable(Trim((*level)->levelName)))}));
    }
}

bool ReplaceLevel(const ArchiveParts& parts, const LevelRecord& level)
{
    const Archive before = parts.archive;
    const auto index = static_cast<std::size_t>(FindLevel(parts.archive, level.levelCode));
    const LevelRecord old = parts.archive.levels[index];
    CountLevelSize(parts.archive, static_cast<double>(level.filesSize) - old.filesSize,
                   SizeKind::Files, index);
    CountLevelSize(parts.archive, static_cast<double>(level.extrasSize) - old.extrasSize,
                   SizeKind::Extras, index);
    parts.archive.levels[index] = level;
    if (!SaveArchiveOrPutBack(parts, before))
        return false;
    parts.list.Refresh();
    parts.list.Select(level.levelCode);
    return true;
}

void DropNewLevel(const ArchiveParts& parts, const LevelRecord& level)
{
    const Path folder = LevelHomeOf(parts.folders, level.levelCode);
    {
        const auto wait =
            parts.host.BeginProgress(ProgressWindow::Wait, GetMsg(Msg::RemovingNewLevelFolder));
        if (FolderExists(folder) && !DoneOrTold(parts.host, RemoveTreeWithProgress(folder, *wait)))
            parts.host.Tell(Tone::Error, GetMsg(Msg::ErrorInRemovingFolder) + TextOf(folder));
    }
    parts.list.Refresh();
}

} // namespace kestrova
