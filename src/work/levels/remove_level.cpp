#include "levels/remove_level.h"

#include "archive/archive_saving.h"
#include "archive/level_folders.h"
#include "archive/set_aside.h"
#include "core/file_kinds.h"
#include "core/look.h"
#include "formats/level_folder.h"
#include "history/changed_record.h"
#include "history/changes.h"
#include "history/history.h"
#include "history/players_files.h"
#include "history/standing.h"
#include "history/undo_entries.h"
#include "platform/files.h"
#include "session/operation.h"
#include "session/telling.h"
#include "session/tree_progress.h"
#include "swap/folder_guard.h"
#include "swap/install.h"
#include "words/levels.h"
#include "words/swap.h"

#include <algorithm>

namespace kestrova
{

namespace
{

bool IsPicture(const Path& file)
{
    const auto patterns = Split(OnDisk::PicturePatterns, '|');
    return std::any_of(patterns.begin(), patterns.end(), [&](const std::string& pattern) {
        return MatchesPattern(file.filename().native(), pattern);
    });
}

/// Savegames, notes and shots in a level's store and in the slots of its savegame archive, and its
/// pictures.
Result<std::vector<Path>> PlayersFilesOf(const Path& levelFolder)
{
    std::vector<Path> files;
    for (const std::string_view part :
         {OnDisk::DirBackupSavegames, OnDisk::DirSavegames, OnDisk::DirScreenshots}) {
        const auto tree = ScanTreeIfThere(InFolder(levelFolder, part));
        if (!tree)
            return tree.Error();
        for (const Path& file : tree->files)
            if (part == OnDisk::DirScreenshots ? IsPicture(file)
                                               : IsPlayersFile(file.filename().native()))
                files.push_back(file);
    }
    return files;
}

Status KeepPlayersFiles(Machine& machine, const Folders& folders, const ProgramSettings& settings,
                        LevelCode code, const Path& levelFolder, Message reason)
{
    const auto files = PlayersFilesOf(levelFolder);
    return files ? KeepInHistory(machine, folders, settings, code, *files, Told(reason))
                 : Status{files.Error()};
}

/// The reasons for which a level stays, in the order in which they are told.
bool MayBeRemoved(Host& host, const Archive& archive, LevelCode code)
{
    const std::ptrdiff_t index = FindLevel(archive, code);
    if (index < 0) {
        host.Tell(Tone::Error, GetMsg(Msg::UnknownLevelCode, {std::to_string(code)}));
        return false;
    }
    if (!DoneOrTold(host, GuardLevelOnCd(archive.levels[static_cast<std::size_t>(index)])))
        return false;
    if (code == originalCode) {
        host.Tell(Tone::Error, GetMsg(Msg::RemoveOriginalLevel, {lineBreak}));
        return false;
    }
    return host.AskYesNo(GetMsg(Msg::AskRemoveLevel) + "\"" +
                         OnOneLine(LevelNameOf(archive, code)) + "\"" +
                         GetMsg(Msg::AskRemoveLevelEnd));
}

/// True when the level does not stand in the Level Editor's folder any more.
bool TakeOut(Session& session, LevelCode code)
{
    if (!TellUnlessKnown(session.host, session.Folders(), session.archive))
        return false;
    if (CurrentLevelCode(session.Folders(), session.archive) != code)
        return true;
    if (!MayChangeTrle(session, session.Folders()))
        return false;
    ActivityLog log;
    RemovePreviousLevel(session, -1, log);
    if (CurrentLevelCode(session.Folders(), session.archive) != code)
        return true;
    session.host.Tell(Tone::Error, GetMsg(Msg::LevelStillInstalled));
    return false;
}

/// The removal as a change; noted, so that it can be undone however far it comes. One that cannot
/// be noted is made without a way back, which is told.
Change NoteRemoval(const ArchiveParts& parts, LevelCode code, std::int32_t undoes)
{
    Change change = NewChange(parts, ChangeKind::LevelRemoved, code);
    const std::ptrdiff_t index = FindLevel(parts.archive, code);
    change.undoes = undoes;
    change.record =
        ChangedRecord{static_cast<std::size_t>(index),
                      parts.archive.levels[static_cast<std::size_t>(index)], std::nullopt};
    const bool wanted = parts.settings.undoCount > 0;
    auto noted = wanted && !ChangeWaits(parts.folders) ? NoteChange(parts.folders, change)
                                                       : MakeFailure(ErrorCode::Refused, {});
    if (!noted)
        change.kind = ChangeKind::Unnamed;
    if (!noted && wanted && FolderExists(change.home))
        TellFailure(parts.host, GetMsg(Msg::RemovalHasNoWayBack), noted.Error());
    return change;
}

/// False when nothing changed.
bool TakeOffList(const ArchiveParts& parts, const ChangedRecord& removal)
{
    const Archive before = parts.archive;
    PutRecord(parts.archive.levels, removal);
    if (!SaveArchiveOrPutBack(parts, before))
        return false;
    parts.list.Refresh();
    return true;
}

/// A folder that is not there is not asked about.
bool WantsFoldersGone(Host& host, LevelFolders folders, const Path& folder)
{
    if (!IsFolder(folder).ValueOr(true))
        return true;
    if (folders != LevelFolders::Ask)
        return folders == LevelFolders::Remove;
    return host.AskYesNo(GetMsg(Msg::AskRemoveFolders, {lineBreak}) + "\"" + TextOf(folder) +
                         "\")");
}

/// Renames the folder, so that it can come back. False where the bounds of undoing have no room for
/// it, or nothing is noted to bring it back by.
Result<bool> SetRemovedAside(Machine& machine, const Folders& folders,
                             const ProgramSettings& settings, const Path& folder, Change& change)
{
    const auto size = FolderSize(folder);
    if (!size)
        return size.Error();
    if (change.kind == ChangeKind::Unnamed ||
        !HasUndoRoom(settings, static_cast<std::uint64_t>(*size)))
        return false;
    const auto digest = DigestOfAside(folder);
    const auto aside = NameForAside(ResolvePath(folder), machine.NowNs());
    if (!digest || !aside)
        return digest ? aside.Error() : digest.Error();
    change.moved = MovedFolder{ResolvePath(folder).native(), aside->native(),
                               static_cast<std::uint64_t>(*size), *digest};
    if (auto status = NoteChange(folders, change); !status)
        return status.Error();
    if (const auto failure = platform::Rename(change.moved->from, change.moved->to))
        return MakeFailure(ErrorCode::CannotWrite, TextOf(folder), failure);
    return true;
}

/// True when the person lets the files of a level go that is larger than what is kept for undoing.
/// Who keeps nothing for that is not asked.
bool MayGoForGood(Host& host, const ProgramSettings& settings, const Path& folder)
{
    return settings.undoCount == 0 || settings.undoMegabytes == 0 ||
           host.AskYesNo(GetMsg(Msg::AskRemoveForGood,
                                {TextOf(folder), std::to_string(settings.undoMegabytes)}));
}

/// The level is off the list, and its folder is where it was.
bool LeaveFolder(Host& host, const Folders& folders, const Path& folder, Change& change,
                 const Failure& why)
{
    change.moved.reset();
    if (change.kind != ChangeKind::Unnamed && !NoteChange(folders, change))
        change.kind = ChangeKind::Unnamed;
    TellFailure(host, GetMsg(Msg::RemovedFolderStays, {TextOf(folder)}), why);
    return false;
}

/// The folder with all that is in it, what the player made kept first.
bool RemoveLevelFolder(const ArchiveParts& parts, LevelCode code, const Path& folder,
                       Change& change)
{
    const auto isThere = IsFolder(folder);
    if (!isThere) {
        TellFailure(parts.host, GetMsg(Msg::RemovedStateNotKept, {TextOf(folder)}),
                    isThere.Error());
        return false;
    }
    if (!*isThere)
        return true;
    if (const auto kept = KeepPlayersFiles(parts.machine, parts.folders, parts.settings, code,
                                           folder, Msg::ReasonRemoved);
        !kept) {
        TellFailure(parts.host, GetMsg(Msg::RemovedStateNotKept, {TextOf(folder)}), kept.Error());
        return false;
    }
    const auto aside =
        SetRemovedAside(parts.machine, parts.folders, parts.settings, folder, change);
    if (!aside ||
        (!*aside && (change.undoes != 0 || !MayGoForGood(parts.host, parts.settings, folder))))
        return LeaveFolder(parts.host, parts.folders, folder, change,
                           aside ? Failure{ErrorCode::Refused, {}, {}} : aside.Error());
    if (*aside)
        return true;
    DropChange(parts.folders, change); // what is removed does not come back
    change.kind = ChangeKind::Unnamed;
    const auto wait =
        parts.host.BeginProgress(ProgressWindow::Wait, GetMsg(Msg::RemovingLevelFolder));
    if (DoneOrTold(parts.host, RemoveTreeWithProgress(folder, *wait)))
        return true;
    parts.host.Tell(Tone::Error, GetMsg(Msg::ErrorWhileRemovingFolder) + TextOf(folder));
    return false;
}

/// The removal can be undone from now on; told where it cannot.
void EndRemoval(Host& host, const Folders& folders, const ProgramSettings& settings,
                const Change& change)
{
    if (change.kind == ChangeKind::Unnamed)
        return;
    const auto ended = EndChange(folders, settings, change);
    if (!ended)
        DropChange(folders, change);
    if (!ended || !FileExists(UndoEntryFile(folders, change.id)))
        TellFailure(
            host, GetMsg(Msg::RemovalHasNoWayBack),
            ended ? MakeFailure(ErrorCode::CannotWrite, TextOf(UndoEntryFile(folders, change.id)))
                  : ended.Error());
}

/// `undoes`: the entry whose removal is made again; 0 for a new one.
bool Remove(Session& session, LevelCode code, LevelFolders folders, std::int32_t undoes)
{
    const Operation operation{session};
    if (!HasArchive(session.host, session.archive) ||
        !DoneOrTold(session.host, ArchiveFolderIsThere(session.archive)) ||
        !MayBeRemoved(session.host, session.archive, code))
        return false;
    const Path folder = LevelHomeOf(session.Folders(), code);
    const auto canLook = IsFolder(folder);
    const bool leadsNowhere =
        canLook && !*canLook && platform::FactsOfLink(folder).kind == platform::FileKind::Link;
    if ((!canLook || leadsNowhere) && folders != LevelFolders::Keep) {
        TellFailure(session.host,
                    GetMsg(Msg::RemoveFolderAway, {TextOf(folder), std::to_string(code)}),
                    canLook ? MakeFailure(ErrorCode::Missing, TextOf(folder)) : canLook.Error());
        return false;
    }
    if (!TakeOut(session, code))
        return false;
    const LevelRecord level =
        session.archive.levels[static_cast<std::size_t>(FindLevel(session.archive, code))];
    Change change = NoteRemoval(session, code, undoes);
    if (!TakeOffList(session, *change.record)) {
        DropChange(session.Folders(), change);
        return false;
    }
    const bool goes = WantsFoldersGone(session.host, folders, folder);
    const bool gone = goes && RemoveLevelFolder(session, code, folder, change);
    bool saved = true;
    if (gone) {
        // Before the change ends, so that a killed one is counted too.
        session.archive.header.mainFolderSize -= level.filesSize;
        session.archive.header.secondaryFolderSize -= level.extrasSize;
        saved = SaveArchive(session);
    }
    EndRemoval(session.host, session.Folders(), session.settings, change);
    if (!gone)
        return !goes;
    session.host.Tell(Tone::Plain, GetMsg(Msg::LevelRemoved));
    session.list.Refresh();
    return saved;
}

} // namespace

bool RemoveLevel(Session& session, LevelCode code, LevelFolders folders)
{
    return Remove(session, code, folders, 0);
}

bool RemoveLevelAgain(Session& session, const Change& undone)
{
    return Remove(session, undone.code, undone.moved ? LevelFolders::Remove : LevelFolders::Keep,
                  undone.id);
}

} // namespace kestrova
