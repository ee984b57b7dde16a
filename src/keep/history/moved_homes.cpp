#include "history/moved_homes.h"

#include "archive/library_notes.h"
#include "core/inside.h"
#include "core/staged_file.h"
#include "core/text.h"
#include "formats/level_folder_name.h"
#include "formats/program_folder.h"
#include "history/history.h"
#include "history/history_index.h"
#include "history/swap_journal_file.h"
#include "history/undo_entries.h"
#include "history/work_note.h"
#include "words/message.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// Paths in one folder that become paths in another one.
class Homes
{
public:
    Homes(const Path& from, const Path& to) : from_(from.lexically_normal()), to_(to) {}

    [[nodiscard]] bool Holds(const std::string& path) const
    {
        return !path.empty() && LiesInside(Path{path}.lexically_normal(), from_);
    }
    /// True when the path was one of them.
    bool Follow(std::string& path) const
    {
        if (!Holds(path))
            return false;
        const Path inside = Path{path}.lexically_normal().lexically_relative(from_);
        path = (inside == "." ? to_ : to_ / inside).native();
        return true;
    }

private:
    const Path from_;
    const Path to_;
};

Status FollowInOwner(const Folders& folders, const Homes& homes)
{
    auto record = ReadOwnerAsNoted(folders);
    if (!record)
        return record.Error();
    if (!*record || !homes.Follow((*record)->home.path))
        return {};
    auto mark = MarkOf((*record)->home.path);
    if (!mark)
        return mark.Error();
    (*record)->home = std::move(*mark);
    return WriteWorkNote(InFolder(folders.program, OnDisk::FragOwner), FormatOwner(**record));
}

Status FollowInHistory(const Folders& folders, const Homes& homes)
{
    const auto levels = LevelsWithHistory(folders);
    if (!levels)
        return levels.Error();
    for (const LevelCode code : *levels) {
        auto index = ReadHistoryIndex(folders, code);
        if (!index)
            return index.Error();
        bool changed = false;
        for (HistoryEntry& entry : index->entries)
            changed = homes.Follow(entry.home) || changed;
        if (!changed)
            continue;
        if (auto status = WriteHistoryIndex(folders, code, *index); !status)
            return status;
    }
    return {};
}

void FollowInChange(Change& change, const Homes& homes)
{
    homes.Follow(change.home);
    homes.Follow(change.header);
    homes.Follow(change.live);
    if (change.moved) {
        homes.Follow(change.moved->from);
        homes.Follow(change.moved->to);
    }
    for (ChangedFolder& folder : change.folders) {
        homes.Follow(folder.folder);
        for (ComingFile& file : folder.after)
            homes.Follow(file.source);
    }
}

Status FollowInUndo(const Folders& folders, const Homes& homes)
{
    const auto list = ReadUndoList(folders);
    if (!list)
        return list.Error();
    for (const ChangeHead& head : list->entries) {
        if (!homes.Holds(head.home))
            continue;
        auto change = ReadUndoEntry(folders, head.id);
        if (!change && change.Error().code == ErrorCode::Damaged)
            continue; // it leads nowhere, wherever its level is
        if (!change)
            return change.Error();
        FollowInChange(*change, homes);
        if (auto status = WriteWholeFile(UndoEntryFile(folders, head.id), FormatChange(*change));
            !status)
            return status;
    }
    return {};
}

} // namespace

Status FollowMovedHomes(const Folders& folders, const Path& from, const Path& to)
{
    const Homes homes{from, to};
    for (const auto follow : {FollowInOwner, FollowInHistory, FollowInUndo})
        if (auto status = follow(folders, homes); !status)
            return status;
    return {};
}

namespace
{

constexpr std::int64_t nsPerSecond = 1'000'000'000;

/// The number that the level had whose folder was set aside, and its folder then.
struct EarlierNumber {
    LevelCode code = 0;
    Path home;
};

std::optional<EarlierNumber> NumberBefore(const Change& back)
{
    if (back.kind != ChangeKind::LevelRemoved || !back.isUndone || !back.moved)
        return {};
    const Path aside = back.moved->from;
    const std::string name = aside.filename().native();
    const std::string_view folder = NameBeforeAside(name);
    const auto code = CodeOfLevelFolder(folder);
    if (!code || *code == back.code)
        return {};
    return EarlierNumber{*code, Path{back.home}.parent_path() / folder};
}

bool IsKeptAlready(const HistoryIndex& index, const HistoryEntry& kept)
{
    return std::any_of(index.entries.begin(), index.entries.end(), [&](const HistoryEntry& entry) {
        return entry.hash == kept.hash && entry.name == kept.name && entry.keptNs == kept.keptNs &&
               entry.picture == kept.picture;
    });
}

/// What was kept while the level had that number is the level's still.
Status MoveHistory(const Folders& folders, const EarlierNumber& before, const Change& back,
                   const TimeOfNumber& time)
{
    auto old = ReadHistoryIndex(folders, before.code);
    auto own = old ? ReadHistoryIndex(folders, back.code) : old;
    if (!own)
        return own.Error();
    const std::string home = Readable(before.home.native());
    const auto follows = [&](const HistoryEntry& entry) {
        const std::int64_t second = entry.keptNs / nsPerSecond;
        return EqualNames(entry.home, home) && second >= time.from && second <= *time.to;
    };
    for (const HistoryEntry& entry : old->entries)
        if (follows(entry) && !IsKeptAlready(*own, entry)) {
            HistoryEntry moved = entry;
            moved.id = NextHistoryId(*own, back.code);
            moved.home = back.home;
            own->entries.push_back(std::move(moved));
        }
    if (std::erase_if(old->entries, follows) == 0)
        return {};
    if (auto status = WriteHistoryIndex(folders, back.code, *own); !status)
        return status;
    return WriteHistoryIndex(folders, before.code, *old);
}

/// A change that was made in the level under its earlier number is of the new one.
bool FollowInEarlier(Change& change, const Homes& homes, const EarlierNumber& before,
                     const Change& back)
{
    bool follows = false;
    for (MarkedLevel& marked : change.marks)
        if (marked.code == before.code && marked.token == back.level) {
            marked.code = back.code;
            follows = true;
        }
    if (change.level != back.level || change.code != before.code)
        return follows;
    change.code = back.code;
    FollowInChange(change, homes);
    if (change.record)
        for (auto* record : {&change.record->before, &change.record->after})
            if (*record)
                (*record)->levelCode = back.code;
    return true;
}

Status FollowInEarlierChanges(const Folders& folders, const EarlierNumber& before,
                              const Change& back)
{
    const Homes homes{before.home, back.home};
    const auto list = ReadUndoList(folders);
    if (!list)
        return list.Error();
    for (const ChangeHead& head : list->entries) {
        if (head.kind == ChangeKind::LevelRemoved ||
            (head.level != back.level && head.kind != ChangeKind::LevelsMarked))
            continue;
        auto change = ReadUndoEntry(folders, head.id);
        if (!change && change.Error().code == ErrorCode::Damaged)
            continue;
        if (!change)
            return change.Error();
        if (!FollowInEarlier(*change, homes, before, back))
            continue;
        if (auto status = WriteWholeFile(UndoEntryFile(folders, head.id), FormatChange(*change));
            !status)
            return status;
    }
    return {};
}

} // namespace

Status FollowNewNumber(const Folders& folders, const Archive& archive, const Change& back)
{
    const auto before = NumberBefore(back);
    if (!before)
        return {};
    Folders own = folders;
    own.levels = Path{back.home}.parent_path();
    const auto time = NoteNewNumber(own, archive, back.level, before->code, back.code);
    if (!time)
        return time.Error();
    // Without the time nobody can tell whose of both levels a kept file is.
    if (time->to)
        if (auto status = MoveHistory(folders, *before, back, *time); !status)
            return status;
    return FollowInEarlierChanges(folders, *before, back);
}

} // namespace kestrova
