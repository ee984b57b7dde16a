#include "levels/undo_change.h"

#include "archive/archive_saving.h"
#include "archive/level_folders.h"
#include "archive/level_sizes.h"
#include "archive/library_notes.h"
#include "core/names.h"
#include "formats/trle_folder.h"
#include "history/changed_record.h"
#include "history/changes.h"
#include "history/marked_levels.h"
#include "history/moved_homes.h"
#include "history/standing.h"
#include "history/undo_entries.h"
#include "levels/may_undo.h"
#include "levels/remove_level.h"
#include "saves/savegame_moves.h"
#include "session/operation.h"
#include "session/telling.h"
#include "storage/stored_hashes.h"
#include "swap/folder_guard.h"
#include "swap/installed_language.h"
#include "swap/mend_after_restart.h"
#include "words/levels.h"
#include "words/library.h"
#include "words/undo.h"

namespace kestrova
{

namespace
{

struct KindWords {
    ChangeKind kind;
    Message words;
};
constexpr KindWords kindWords[] = {
    {ChangeKind::SlotsFreed, Msg::DidSlotsFreed},
    {ChangeKind::SlotsFilled, Msg::DidSlotsFilled},
    {ChangeKind::SavegamesImported, Msg::DidSavegamesImported},
    {ChangeKind::SavegamesExported, Msg::DidSavegamesExported},
    {ChangeKind::SavegameBroughtBack, Msg::DidSavegameBroughtBack},
    {ChangeKind::ShotAdded, Msg::DidShotAdded},
    {ChangeKind::ShotCaptured, Msg::DidShotCaptured},
    {ChangeKind::ShotReplaced, Msg::DidShotReplaced},
    {ChangeKind::ShotDeleted, Msg::DidShotDeleted},
    {ChangeKind::ShotRenamed, Msg::DidShotRenamed},
    {ChangeKind::ShotsImported, Msg::DidShotsImported},
    {ChangeKind::LevelEdited, Msg::DidLevelEdited},
    {ChangeKind::LevelRemoved, Msg::DidLevelRemoved},
    {ChangeKind::LanguageChanged, Msg::DidLanguageChanged},
    {ChangeKind::LanguageRestored, Msg::DidLanguageRestored},
    {ChangeKind::FilesLeft, Msg::DidFilesLeft},
    {ChangeKind::SavegamesDeleted, Msg::DidSavegamesDeleted},
    {ChangeKind::LevelsMarked, Msg::DidLevelsMarked},
    {ChangeKind::LevelRepaired, Msg::DidLevelRepaired},
};

/// What was said of one level, by the word that its entry has for it.
constexpr std::pair<std::string_view, Message> markWords[] = {
    {"status", Msg::DidMarkedStatus}, {"stars", Msg::DidMarkedStars}, {"tags", Msg::DidMarkedTags},
    {"note", Msg::DidMarkedNote},     {"cover", Msg::DidMarkedCover},
};

Message WordsOfMark(std::string_view word)
{
    for (const auto& [known, words] : markWords)
        if (known == word)
            return words;
    return Msg::DidLevelMarked;
}

/// The sizes of the header follow the record, which is as the change has it before.
void CountRecord(Archive& archive, const Change& change)
{
    const ChangedRecord& record = *change.record;
    // A removed level whose folder stayed is counted still.
    if ((!record.before || !record.after) && !change.moved)
        return;
    if (change.code == originalCode)
        return;
    const auto sizes = [](const std::optional<LevelRecord>& level) {
        return level ? std::pair<double, double>{level->filesSize, level->extrasSize}
                     : std::pair<double, double>{};
    };
    const auto [filesAfter, extrasAfter] = sizes(record.after);
    const auto [filesBefore, extrasBefore] = sizes(record.before);
    archive.header.mainFolderSize += filesAfter - filesBefore;
    archive.header.secondaryFolderSize += extrasAfter - extrasBefore;
}

/// The record in the list, saved. False, told, with the list as it was.
bool TakeRecord(const ArchiveParts& parts, const Change& change)
{
    if (!change.record || StateOf(parts.archive.levels, *change.record) == RecordState::After)
        return true;
    const Archive before = parts.archive;
    PutRecord(parts.archive.levels, *change.record);
    CountRecord(parts.archive, change);
    if (change.kind == ChangeKind::FilesLeft)
        FollowDiscs(parts.archive);
    return SaveArchiveOrPutBack(parts, before);
}

Status MoveAsSaid(const Change& change)
{
    if (!change.moved)
        return {};
    if (const auto failure = platform::Rename(change.moved->from, change.moved->to))
        return MakeFailure(ErrorCode::CannotWrite, change.moved->from, failure);
    return {};
}

Change WayBack(const ChangeParts& parts, const Change& entry)
{
    Change back = Inverse(entry);
    const Change now = NewChange(parts, entry.kind, entry.code);
    back.id = now.id;
    back.madeNs = now.madeNs;
    back.maker = now.maker;
    back.archive = now.archive;
    back.sizes = now.sizes;
    back.reason = Told(Msg::ReasonUndone);
    back.kept = UndoContents(parts.folders, back).native();
    return back;
}

bool Tell(Host& host, Message words, const Change& entry, const Failure& failure)
{
    TellFailure(host, GetMsg(words, {WhatWasDone(entry)}), failure);
    return false;
}

/// A level that comes back, its folder with it.
bool MakeByRecord(const ArchiveParts& parts, const Change& back, const Change& entry)
{
    auto status = NoteChange(parts.folders, back);
    if (status)
        status = MoveAsSaid(back);
    if (!status) {
        DropChange(parts.folders, back);
        return Tell(parts.host, Msg::NotUndone, entry, status.Error());
    }
    if (TakeRecord(parts, back)) {
        if (const auto followed = FollowNewNumber(parts.folders, parts.archive, back); !followed)
            TellFailure(parts.host, GetMsg(Msg::NotesNotFollowed), followed.Error());
        return true;
    }
    if (!back.moved || !platform::Rename(back.moved->to, back.moved->from))
        DropChange(parts.folders, back);
    return false;
}

/// Of a picture that has its other name again.
void LetCoverFollow(Host& host, const Folders& folders, const Archive& archive, const Change& back)
{
    if (const auto followed = FollowRenamedCover(folders, archive, back); !followed)
        TellFailure(host, GetMsg(Msg::NotesNotWritten, {TextOf(LibraryFileOf(folders))}),
                    followed.Error());
}

/// Files that change, and then what follows them.
bool MakeByFiles(const ArchiveParts& parts, const Change& back, const Change& entry,
                 const Heartbeat& beat)
{
    const Folders& folders = parts.folders;
    // What a repair replaced was no level's file, so that its note stays.
    std::optional<StoredWatch> watch;
    if (back.ofLevelsFiles && entry.kind != ChangeKind::LevelRepaired)
        watch.emplace(back.home, beat);
    const auto made = MakeChange(parts, back, {}, beat);
    if (!made && made.Error().code == ErrorCode::Stopped && !ChangeWaits(folders))
        return false; // all is as it was, and whoever pressed Stop knows
    if (!made)
        return Tell(parts.host, ChangeWaits(folders) ? Msg::UndoUnfinished : Msg::NotUndone, entry,
                    made.Error());
    WriteArchivedCount(back, back.archivedCount);
    LetCoverFollow(parts.host, folders, parts.archive, back);
    if (!TakeRecord(parts, back))
        return false; // the next start has it in the file
    const std::ptrdiff_t index = FindLevel(parts.archive, back.code);
    if (back.extraBytes != 0 && index >= 0)
        AddLevelSize(parts, back.extraBytes, SizeKind::Extras, static_cast<std::size_t>(index));
    return true;
}

/// What is noted of levels.
bool MakeByMarks(Host& host, const Folders& folders, const Archive& archive, const Change& back,
                 const Change& entry)
{
    auto status = NoteChange(folders, back);
    if (status)
        status = MarkAsSaid(folders, archive, back);
    if (status)
        return true;
    DropChange(folders, back);
    return Tell(host, Msg::NotUndone, entry, status.Error());
}

bool IsLanguage(ChangeKind kind)
{
    return kind == ChangeKind::LanguageChanged || kind == ChangeKind::LanguageRestored;
}

/// The Level Editor's folder follows where the level stands there.
void FollowInTrle(Host& host, Machine& machine, const Folders& folders, const Archive& archive,
                  const Change& back)
{
    for (const ChangedFolder& folder : back.folders)
        for (const ComingFile& file : folder.after)
            if (MatchesPattern(file.name, OnDisk::PatDat))
                if (const auto put = PutInstalledLanguage(
                        machine, folders, archive, ResolvePath(Path{folder.folder} / file.name));
                    !put)
                    host.Tell(Tone::Warning, GetMsg(Msg::LanguageNotInstalled, {file.name}),
                              put.Error().reason);
}

/// The removal is an ordinary one; its own entry leads back.
bool RemoveAgain(Session& session, const Change& entry)
{
    const auto bytes = entry.moved ? FolderSize(entry.moved->to) : Result<double>{0.0};
    if (!bytes)
        return Tell(session.host, Msg::NotUndone, entry, bytes.Error());
    if (!HasUndoRoom(session.settings, static_cast<std::uint64_t>(*bytes)))
        return Tell(session.host, Msg::NotUndone, entry,
                    Failure{ErrorCode::Refused, entry.levelName, GetMsg(Msg::RedoNoRoom)});
    if (!RemoveLevelAgain(session, entry))
        return false;
    DropUsedEntry(session.Folders(), entry);
    return true;
}

} // namespace

std::string WhatWasDone(const ChangeHead& entry)
{
    if (entry.kind == ChangeKind::LevelMarked)
        return GetMsg(WordsOfMark(entry.subject), {entry.subject, Readable(entry.levelName)});
    for (const KindWords& row : kindWords)
        if (row.kind == entry.kind)
            return GetMsg(row.words, {Readable(entry.subject), Readable(entry.levelName)});
    return {};
}

std::optional<ChangeHead> NextToUndo(const Folders& folders, const Archive& archive, UndoWay way,
                                     std::int32_t before)
{
    return NewestUndo(folders, [&](const ChangeHead& entry) {
        return entry.id < before && entry.isUndone == (way == UndoWay::Redo) &&
               WhereIsLevel(folders, archive, entry) == LevelIs::Here;
    });
}

namespace
{

bool Undo(Session& session, const Change& change, LevelCode& code)
{
    auto ready = EndEarlierMove(session);
    auto wait = session.host.BeginProgress(
        ProgressWindow::Wait,
        GetMsg(change.isUndone ? Msg::RedoUnderWay : Msg::UndoUnderWay, {WhatWasDone(change)}));
    wait->AllowStop();
    const Heartbeat beat = [&] { return wait->Step(); };
    if (ready)
        ready = MayUndo(session.Folders(), session.archive, change, beat);
    if (!ready && ready.Error().code == ErrorCode::Stopped)
        return false;
    if (!ready)
        return Tell(session.host, Msg::NotUndone, change, ready.Error());
    const Change entry = UnderFreeNumber(session.Folders(), session.archive, change);
    code = entry.code;
    if (entry.kind == ChangeKind::LevelRemoved && entry.isUndone) {
        wait.reset(); // a removal has its own
        return RemoveAgain(session, entry);
    }
    const bool follows = IsLanguage(entry.kind) &&
                         CurrentLevelCode(session.Folders(), session.archive) == entry.code;
    if (follows && !MayChangeTrle(session, session.Folders()))
        return false;
    if (follows)
        MendAfterRestart(session, entry.code);
    const Change back = WayBack(session, entry);
    if (!(!back.marks.empty()
              ? MakeByMarks(session.host, session.Folders(), session.archive, back, entry)
          : back.folders.empty() ? MakeByRecord(session, back, entry)
                                 : MakeByFiles(session, back, entry, beat)))
        return false;
    if (follows)
        FollowInTrle(session.host, session.machine, session.Folders(), session.archive, back);
    if (const auto ended = EndChange(session.Folders(), session.settings, back); !ended)
        return Tell(session.host, Msg::UndoUnfinished, entry, ended.Error());
    DropUsedEntry(session.Folders(), entry);
    session.list.Refresh();
    session.list.Select(entry.code);
    return true;
}

} // namespace

std::optional<LevelCode> UndoChange(Session& session, const Change& change)
{
    const Operation operation{session};
    LevelCode code = change.code;
    return Undo(session, change, code) ? std::optional{code} : std::nullopt;
}

} // namespace kestrova
