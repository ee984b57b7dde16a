#include "history/changes.h"

#include "archive/level_token.h"
#include "core/copying.h"
#include "core/look.h"
#include "core/removal.h"
#include "core/staged_file.h"
#include "formats/program_folder.h"
#include "formats/savegame_records.h"
#include "history/change_steps.h"
#include "history/changed_record.h"
#include "history/flush_change.h"
#include "history/marked_levels.h"
#include "history/moved_homes.h"
#include "history/players_files.h"
#include "history/undo_entries.h"
#include "history/undo_tokens.h"
#include "history/work_note.h"
#include "words/restore.h"

namespace kestrova
{

namespace
{

Path ChangeNotePath(const Folders& folders)
{
    return InFolder(folders.program, OnDisk::FragChange);
}

Status DropNote(const Folders& folders)
{
    const Path file = ChangeNotePath(folders);
    const auto dropped = DropWorkNote(file);
    // A note that a power cut brings back is gone through once more and finds nothing to do.
    if (dropped && *dropped)
        (void)FlushFolder(file.parent_path());
    return dropped ? Status{} : Status{dropped.Error()};
}

/// Whoever makes it the other way round finds every content.
bool KeptAll(const Change& change)
{
    for (const ChangedFolder& folder : Inverse(change).folders)
        for (const ComingFile& file : folder.after)
            if (!IsFile(file.source).ValueOr(false))
                return false;
    return true;
}

/// The note becomes an entry, in one step.
Status NoteToEntry(const Folders& folders, const Change& change)
{
    const Path entry = UndoEntryFile(folders, change.id);
    if (auto status = MakeFolders(entry.parent_path()); !status)
        return status;
    if (const auto failure = platform::Rename(ChangeNotePath(folders), entry))
        return MakeFailure(ErrorCode::CannotWrite, TextOf(entry), failure);
    (void)FlushFolder(entry.parent_path()); // one that a power cut takes back is none
    return {};
}

/// What was undone cannot be done again once something else was done in the same archive.
void ForgetUndone(const Folders& folders, const Change& done)
{
    const Path place = Path{done.home}.parent_path();
    if (const auto list = ReadUndoList(folders))
        for (const ChangeHead& entry : list->entries)
            if (const Path other = Path{entry.home}.parent_path();
                entry.isUndone && (other == place || IsSameFolder(other, place)))
                DropUndoEntry(folders, entry);
}

/// The file with the list that the change is of: it may have got another name since, and be the one
/// that is loaded now.
Path ListOf(const Folders& folders, const Archive& archive, const Change& change)
{
    const bool isHere = archive.Loaded() &&
                        Path{change.home} == LevelHomeOf(folders, change.code).lexically_normal();
    return isHere && IsFree(change.archive).ValueOr(false) ? archive.file : Path{change.archive};
}

/// What came of a change without files that was killed is told by the list of its archive, and the
/// folder follows. An archive that is not there tells nothing: then the folder stays where it is.
Status SettleByRecord(const Change& change)
{
    if (change.moved &&
        IsFree(change.moved->from).ValueOr(true) == IsFree(change.moved->to).ValueOr(true))
        return {}; // neither is there, or both are
    const auto archive = ReadArchiveFile(change.archive);
    if (!archive)
        return {};
    const bool done = StateOf(archive->levels, *change.record) == RecordState::After;
    if (!change.moved)
        return done ? Status{} : MakeFailure(ErrorCode::Missing, {});
    const Path from = done ? change.moved->from : change.moved->to;
    const Path to = done ? change.moved->to : change.moved->from;
    if (!IsFree(from).ValueOr(true))
        if (const auto failure = platform::Rename(from, to))
            return MakeFailure(ErrorCode::CannotWrite, TextOf(from), failure);
    return done ? Status{} : MakeFailure(ErrorCode::Missing, {});
}

bool CanBeReadBack(const std::string& text)
{
    return text.size() <= longestChange && ParseChange(text);
}

/// The note's text. Where it could not be read back as an entry, it is one that is finished after a
/// kill and no more.
Result<std::string> NoteTextOf(const Change& change)
{
    std::string text = FormatChange(change);
    if (CanBeReadBack(text))
        return text;
    Change unnamed = change;
    unnamed.kind = ChangeKind::Unnamed;
    unnamed.record.reset();
    unnamed.moved.reset();
    text = FormatChange(unnamed);
    if (CanBeReadBack(text))
        return text;
    return MakeFailure(ErrorCode::Refused, change.home);
}

/// True for a note that can become an entry.
bool IsEntry(const Change& change)
{
    return change.kind != ChangeKind::Unnamed && CanBeReadBack(FormatChange(change));
}

} // namespace

Change NewChange(const ChangeParts& parts, ChangeKind kind, LevelCode code)
{
    const Folders& folders = parts.folders;
    const Archive& archive = parts.archive;
    Change change;
    change.code = code;
    change.kind = kind;
    change.id = NextUndoId(folders);
    change.madeNs = parts.machine.NowNs();
    change.levelName = LevelNameOf(archive, code);
    const Path home = LevelHomeOf(folders, code).lexically_normal();
    change.home = home.native();
    change.archive = archive.file.native();
    const LevelRecord* level = archive.Find(code);
    change.sizes = {archive.header.mainFolderSize, archive.header.secondaryFolderSize,
                    level == nullptr ? 0 : level->extrasSize};
    if (parts.settings.undoCount == 0)
        return change;
    // Without them there is no way back, but the change can be made.
    change.maker = TokenOfProgram(folders).ValueOr({});
    change.level = TokenOfLevel(home).ValueOr({});
    change.kept = UndoContents(folders, change).native();
    return change;
}

void AreLevelsFiles(const Folders& folders, Change& change)
{
    change.ofLevelsFiles = true;
    if (!change.kept.empty())
        change.kept = UndoContents(folders, change).native();
}

Result<ChangedFolder> FilesThatGo(const Path& folder, const std::vector<Path>& files)
{
    auto hashes = HashesOf(files);
    if (!hashes)
        return hashes.Error();
    ChangedFolder changed;
    changed.folder = folder.native();
    changed.before = std::move(hashes).Value();
    return changed;
}

Result<ChangedFolder> FilesThatCame(const Path& folder, const std::vector<Path>& files)
{
    auto changed = FilesThatGo(folder, files);
    if (!changed)
        return changed;
    for (StateFile& file : changed->before)
        changed->after.push_back({file.name, file.hash, (folder / file.name).native()});
    changed->before.clear();
    return changed;
}

Status MakeChange(const ChangeParts& parts, const Change& change,
                  const std::set<std::string>& elsewhere, const Heartbeat& beat)
{
    const Folders& folders = parts.folders;
    if (ChangeWaits(folders)) // its note would be lost
        return Failure{ErrorCode::Refused, {}, GetMsg(Msg::WorkPending)};
    const auto text = NoteTextOf(change);
    if (!text)
        return text.Error();
    if (auto status = WriteWorkNote(ChangeNotePath(folders), *text, false);
        !status) {               // flushed by the steps
        (void)DropNote(folders); // it may stand though a part of it failed; nothing is done yet
        return status;
    }
    ChangeSteps steps{parts, change, elsewhere, ChangeSteps::Round::First, beat};
    auto status = steps.Go();
    if (!status && steps.TakeBack())
        DropChange(folders, change); // a note that stays is finished at the next start
    return status;
}

Status NoteChange(const Folders& folders, const Change& change)
{
    const std::string text = FormatChange(change);
    if (!CanBeReadBack(text))
        return MakeFailure(ErrorCode::Refused, change.home);
    auto status = WriteWorkNote(ChangeNotePath(folders), text);
    if (!status)
        (void)DropNote(folders);
    return status;
}

void DropChange(const Folders& folders, const Change& change)
{
    ClearUndoContents(folders, change);
    (void)DropNote(folders); // the next start finds nothing to do
}

namespace
{

/// The note of a change that is whole becomes its entry. A change that has no way back is as whole
/// as it was before there was one.
Status LeaveEntry(const Folders& folders, const ProgramSettings& settings, const Change& change)
{
    const bool leadsBack = settings.undoCount > 0 && IsEntry(change) && KeptAll(change) &&
                           NoteToEntry(folders, change);
    if (!leadsBack) {
        if (auto status = DropNote(folders); !status)
            return status;
        DropChange(folders, change);
        return {};
    }
    if (change.undoes == 0)
        ForgetUndone(folders, change);
    BoundUndo(folders, settings);
    return {};
}

} // namespace

Status EndChange(const Folders& folders, const ProgramSettings& settings, const Change& change)
{
    if (auto status = FlushChange(folders, change); !status)
        return status;
    return LeaveEntry(folders, settings, change);
}

void NoteDone(const Folders& folders, const ProgramSettings& settings, const Change& change)
{
    if (settings.undoCount == 0 || ChangeWaits(folders))
        return;
    if (!NoteChange(folders, change) || !LeaveEntry(folders, settings, change))
        DropChange(folders, change);
}

void WriteArchivedCount(const Change& change, std::int32_t archivedCount)
{
    if (change.header.empty())
        return;
    const Path file = change.header;
    const auto bytes = ReadWholeFile(file);
    if (!bytes)
        return;
    auto record = ParseSavegameArchiveHeader(*bytes);
    if (!record || record->archivedCount == archivedCount)
        return;
    record->archivedCount = archivedCount;
    // Only a number that is shown.
    (void)WriteRecordFile(file, FormatSavegameArchiveHeader(*record), false);
}

bool ChangeWaits(const Folders& folders)
{
    return !IsFree(ChangeNotePath(folders)).ValueOr(false); // one that cannot be looked at may wait
}

bool SavegameMoveWaitsIn(const Folders& folders)
{
    const auto text = ReadFileIfThere(ChangeNotePath(folders), longestChange);
    const auto change = text && *text ? ParseChange(**text) : Result<Change>{Failure{}};
    return ChangeWaits(folders) && (!change || change->kind <= ChangeKind::SlotsFilled);
}

namespace
{

/// Record and sizes are in the list, and the change is ended.
Status EndCounted(const Folders& folders, Archive& archive, const ProgramSettings& settings,
                  const Change& change)
{
    if (!change.archive.empty() && (change.record || change.extraBytes != 0)) {
        if (auto status = PutRecordInFile(change); !status && change.record)
            return status; // without a record it is a number that is shown
        if (archive.file == Path{change.archive})
            (void)CountOnce(archive.header, archive.levels, change);
    }
    if (archive.file == Path{change.archive}) {
        (void)FollowRenamedCover(folders, archive, change); // another picture stands for it then
        if (auto status = FollowNewNumber(folders, archive, change); !status)
            return status;
    }
    return EndChange(folders, settings, change);
}

/// What a player says of levels is said, which may be so already. Without the archive nothing is,
/// and the entry that was to be undone is still there.
Status EndMarking(const Folders& folders, const ProgramSettings& settings, const Change& change)
{
    auto list = ReadArchiveFile(change.archive);
    if (!list) {
        DropChange(folders, change);
        return {};
    }
    Folders own = folders;
    own.levels = Path{change.home}.parent_path();
    const Archive archive{std::move(list->header), std::move(list->levels), change.archive};
    if (auto status = MarkAsSaid(own, archive, change); !status)
        return status;
    return EndChange(folders, settings, change);
}

} // namespace

Status FinishChange(Machine& machine, const Folders& folders, Archive& archive,
                    const ProgramSettings& settings)
{
    const Path file = ChangeNotePath(folders);
    const auto text = ReadFileIfThere(file, longestChange);
    if (!text)
        return text.Error();
    if (!*text)
        return {};
    auto change = ParseChange(**text);
    if (!change) {
        const auto aside = RenameAside(file);
        return aside ? MakeFailure(ErrorCode::Damaged, TextOf(*aside)) : aside.Error();
    }
    change->kept = UndoContents(folders, *change).native();
    change->archive = ListOf(folders, archive, *change).native();
    if (!change->marks.empty())
        return EndMarking(folders, settings, *change);
    if (change->folders.empty()) {
        const auto settled =
            change->record ? SettleByRecord(*change) : MakeFailure(ErrorCode::Missing, {});
        if (settled)
            return EndCounted(folders, archive, settings, *change);
        if (settled.Error().code != ErrorCode::Missing)
            return settled;
        DropChange(folders, *change);
        return ChangeWaits(folders) ? MakeFailure(ErrorCode::CannotDelete, TextOf(file)) : Status{};
    }
    ChangeSteps steps{
        {machine, folders, archive, settings}, *change, {}, ChangeSteps::Round::Later};
    if (auto status = steps.Go(); !status)
        return status;
    WriteArchivedCount(*change, change->archivedCount - steps.NotArchived());
    if (change->record && archive.file == Path{change->archive})
        PutRecord(archive.levels, *change->record);
    return EndCounted(folders, archive, settings, *change);
}

} // namespace kestrova
