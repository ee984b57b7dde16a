#include "levels/may_undo.h"

#include "archive/level_folders.h"
#include "archive/level_token.h"
#include "core/inside.h"
#include "core/look.h"
#include "core/text.h"
#include "formats/level_folder.h"
#include "formats/program_folder.h"
#include "history/changed_record.h"
#include "history/history.h"
#include "history/marked_levels.h"
#include "history/standing.h"
#include "history/undo_entries.h"
#include "words/undo.h"

#include <map>

namespace kestrova
{

namespace
{

/// The level's folder, by whatever path the archive's folder was loaded.
bool IsHomeOf(const Folders& folders, const ChangeHead& entry)
{
    const Path home{entry.home};
    const Path now = LevelHomeOf(folders, entry.code).lexically_normal();
    return home == now || (EqualNames(home.filename().native(), now.filename().native()) &&
                           IsSameFolder(home.parent_path(), now.parent_path()));
}

} // namespace

LevelIs WhereIsLevel(const Folders& folders, const Archive& archive, const ChangeHead& entry)
{
    if (!IsHomeOf(folders, entry))
        return LevelIs::Elsewhere;
    // Of two lists over the same folders each has its own records; a file that is gone was renamed.
    const bool ofRecord = entry.kind == ChangeKind::LevelEdited ||
                          entry.kind == ChangeKind::LevelRemoved ||
                          entry.kind == ChangeKind::FilesLeft;
    if (ofRecord && Path{entry.archive} != archive.file &&
        !IsSameThing(LookAt(entry.archive).ValueOr({}), LookAt(archive.file).ValueOr({})) &&
        !IsFree(entry.archive).ValueOr(false))
        return LevelIs::Elsewhere;
    const bool removed = entry.kind == ChangeKind::LevelRemoved && !entry.isUndone;
    if (!removed && archive.Find(entry.code) == nullptr)
        return LevelIs::Gone;
    const bool wholeMoved = entry.moved && entry.kind == ChangeKind::LevelRemoved;
    const Path place = wholeMoved ? entry.moved->to : entry.home;
    const auto token = KnownTokenOfLevel(place);
    if (token && *token == entry.level)
        return LevelIs::Here;
    return token && FolderExists(place) ? LevelIs::Replaced : LevelIs::Gone;
}

namespace
{

Failure UndoRefusal(Message words, const std::string& subject,
                    std::initializer_list<std::string_view> values = {})
{
    return {ErrorCode::Refused, subject, GetMsg(words, values)};
}

Status GoesOn(const Heartbeat& beat)
{
    return !beat || beat() ? Status{} : MakeFailure(ErrorCode::Stopped, {});
}

/// How names of a folder count as the same: as the disk has it, or as the game reads them.
enum class Names { AsOnDisk, InAnyCapitals };

/// A file that went can come back under its name: none has it since but one that came in its place.
Status IsFreeAgain(const Path& place, Names names, const std::map<std::string, Path>& came)
{
    const auto now = LookAtSpelled(place);
    if (!now)
        return now.Error();
    const bool looksFurther =
        names == Names::InAnyCapitals && now->kind == platform::FileKind::Missing;
    const auto twin = looksFurther ? FindPath(place) : Result<Path>{place};
    const auto there = twin ? LookAtSpelled(*twin) : twin.Error();
    if (!there)
        return there.Error();
    if (there->kind == platform::FileKind::Missing)
        return {};
    const auto other = came.find(FoldCase(place.filename().native()));
    if (other != came.end()) {
        const auto facts = LookAtSpelled(other->second);
        if (!facts)
            return facts.Error();
        if (IsSameThing(*there, *facts))
            return {};
    }
    return UndoRefusal(Msg::UndoNameTaken, TextOf(*twin));
}

/// Every file that came is as it came, and no other one has the name of one that went.
Status FilesAreAsLeft(const ChangedFolder& folder, Names names, const Heartbeat& beat)
{
    const Path place = ResolvePath(folder.folder);
    const auto isThere = IsFolder(place);
    if (!isThere)
        return isThere.Error();
    if (!*isThere && !folder.goes)
        return UndoRefusal(Msg::UndoFolderGone, TextOf(place));
    std::map<std::string, Path> came; ///< by folded name
    for (const ComingFile& file : folder.after) {
        if (auto status = GoesOn(beat); !status)
            return status;
        const Path path = ResolvePath(place / file.name);
        const auto hash = HashIfThere(path);
        if (!hash)
            return hash.Error();
        if (*hash != file.hash)
            return UndoRefusal(Msg::UndoChangedSince, TextOf(place / file.name));
        came.emplace(FoldCase(file.name), path);
    }
    for (const StateFile& file : folder.before)
        if (auto status = IsFreeAgain(place / file.name, names, came); !status)
            return status;
    return {};
}

/// What went can come back.
Status ContentsAreThere(const Folders& folders, const Change& entry, const Heartbeat& beat)
{
    for (const ChangedFolder& folder : Inverse(entry).folders)
        for (const ComingFile& file : folder.after) {
            if (auto status = GoesOn(beat); !status)
                return status;
            bool found = false;
            for (const Path& source : {Path{file.source}, HistoryContent(folders, file.hash)}) {
                const auto hash = found ? Result<std::string>{file.hash} : HashIfThere(source);
                if (!hash)
                    return hash.Error();
                found = *hash == file.hash;
            }
            if (!found)
                return UndoRefusal(Msg::UndoContentGone, file.name);
        }
    return {};
}

/// The level's savegames stand where they stood.
Status LivesWhereItDid(const Folders& folders, const Archive& archive, const Change& entry)
{
    if (entry.live.empty())
        return {};
    const auto live = LiveStateFolder(folders, archive, entry.code);
    if (!live)
        return live.Error();
    return IsSameFolder(*live, entry.live)
               ? Status{}
               : UndoRefusal(Msg::UndoElsewhereNow, entry.live, {std::to_string(entry.code)});
}

/// The folder of a level that was taken off the list with its folder left, once another level has
/// that place: it was set aside then.
std::optional<Path> FolderThatWaits(const ChangeHead& entry)
{
    if (entry.kind != ChangeKind::LevelRemoved || entry.moved)
        return {};
    const Path home{entry.home};
    const std::string mark = Filled(OnDisk::FragSetAside, {home.filename().native(), ""});
    if (const auto folders = ListSubfolders(home.parent_path()))
        for (const Path& folder : *folders)
            if (folder.filename().native().starts_with(mark) &&
                KnownTokenOfLevel(folder).ValueOr({}) == entry.level)
                return folder;
    return {};
}

Status LevelIsHere(const Folders& folders, const Archive& archive, const ChangeHead& entry)
{
    switch (WhereIsLevel(folders, archive, entry)) {
    case LevelIs::Elsewhere:
        return UndoRefusal(Msg::UndoOtherArchive, entry.home);
    case LevelIs::Replaced:
        if (const auto waits = FolderThatWaits(entry))
            return UndoRefusal(Msg::UndoNumberTaken, TextOf(*waits), {std::to_string(entry.code)});
        return UndoRefusal(Msg::UndoOtherLevel, entry.moved ? entry.moved->to : entry.home);
    case LevelIs::Gone:
        if (archive.Find(entry.code) != nullptr || entry.kind == ChangeKind::LevelRemoved)
            return UndoRefusal(Msg::UndoFolderGone, entry.moved ? entry.moved->to : entry.home);
        return UndoRefusal(Msg::UndoLevelGone, entry.levelName);
    case LevelIs::Here:
        break;
    }
    return {};
}

Status RecordIsAsLeft(const Archive& archive, const Change& entry)
{
    if (!entry.record)
        return archive.Find(entry.code) != nullptr
                   ? Status{}
                   : UndoRefusal(Msg::UndoLevelGone, entry.levelName);
    const ChangedRecord& record = *entry.record;
    // A list that was never saved without the level has it as it was.
    const bool unsaved =
        !record.after && entry.moved && StateOf(archive.levels, record) == RecordState::Before;
    if (unsaved)
        return {};
    if (!record.after && archive.Find(entry.code) != nullptr)
        return UndoRefusal(Msg::UndoNumberTaken, entry.moved ? entry.moved->to : entry.home,
                           {std::to_string(entry.code)});
    if (record.after && archive.Find(entry.code) == nullptr)
        return UndoRefusal(Msg::UndoLevelGone, entry.levelName);
    return StateOf(archive.levels, record) == RecordState::After
               ? Status{}
               : UndoRefusal(Msg::UndoRecordOther, entry.levelName);
}

Status FolderIsAsLeft(const Change& entry)
{
    const std::string place = entry.moved ? entry.moved->to : entry.home;
    // A level that was taken off the list with its folder left must have it still.
    if (!entry.moved && !(entry.record && !entry.record->after))
        return {};
    const auto isThere = IsFolder(place);
    if (!isThere)
        return isThere.Error();
    if (!*isThere)
        return UndoRefusal(Msg::UndoFolderGone, place);
    if (entry.moved && entry.isUndone && entry.kind == ChangeKind::FilesLeft) {
        const auto digest = DigestOfAside(place);
        if (!digest)
            return digest.Error();
        if (*digest != entry.moved->digest)
            return UndoRefusal(Msg::UndoChangedSince, place);
        const auto isFree = IsFree(entry.moved->from);
        return isFree ? *isFree ? Status{} : UndoRefusal(Msg::UndoNameTaken, entry.moved->from)
                      : Status{isFree.Error()};
    }
    if (!entry.moved || entry.isUndone) // a folder that goes again gets a name of its own
        return {};
    const auto isFree = IsFree(entry.moved->from);
    if (!isFree)
        return isFree.Error();
    return *isFree ? Status{} : UndoRefusal(Msg::UndoNameTaken, entry.moved->from);
}

Status MarksAreAsLeft(const Folders& folders, const Archive& archive, const Change& entry)
{
    const auto other = OtherwiseMarked(folders, archive, entry);
    if (!other)
        return other.Error();
    return *other ? UndoRefusal(Msg::UndoMarksOther, LevelNameOf(archive, **other)) : Status{};
}

} // namespace

Change UnderFreeNumber(const Folders& folders, const Archive& archive, const Change& entry)
{
    const bool comesBack = entry.kind == ChangeKind::LevelRemoved && !entry.isUndone &&
                           entry.moved && entry.record && entry.record->before;
    if (!comesBack || archive.Find(entry.code) == nullptr ||
        StateOf(archive.levels, *entry.record) == RecordState::Before)
        return entry;
    Change other = entry;
    for (other.code = NextLevelCode(archive);
         !IsFree(LevelHomeOf(folders, other.code)).ValueOr(true);)
        ++other.code; // a folder that the list does not know stays as it is
    // The folder may be known by another path than the one that it was removed by.
    const Path name = LevelHomeOf(folders, other.code).filename();
    other.home = (Path{entry.home}.parent_path() / name).native();
    other.moved->from = (Path{entry.moved->to}.parent_path() / name).native();
    other.record->before->levelCode = other.code;
    return other;
}

Status MayUndo(const Folders& folders, const Archive& archive, const Change& change,
               const Heartbeat& beat)
{
    const Change entry = UnderFreeNumber(folders, archive, change);
    if (auto status = LevelIsHere(folders, archive, entry); !status)
        return status;
    if (auto status = RecordIsAsLeft(archive, entry); !status)
        return status;
    if (auto status = FolderIsAsLeft(entry); !status)
        return status;
    if (auto status = LivesWhereItDid(folders, archive, entry); !status)
        return status;
    if (!entry.marks.empty())
        return MarksAreAsLeft(folders, archive, entry);
    // Of a level's own files the game could not tell apart two that differ in capitals alone;
    // pictures may.
    const Path forGame = ResolvePath(InFolder(Path{entry.home}, OnDisk::DirFiles));
    for (const ChangedFolder& folder : entry.folders) {
        const Names names = LiesInside(ResolvePath(folder.folder), forGame) ? Names::InAnyCapitals
                                                                            : Names::AsOnDisk;
        if (auto status = FilesAreAsLeft(folder, names, beat); !status)
            return status;
    }
    return ContentsAreThere(folders, entry, beat);
}

} // namespace kestrova
