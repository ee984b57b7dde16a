#include "history/moved_homes.h"

#include "core/inside.h"
#include "core/staged_file.h"
#include "core/text.h"
#include "formats/program_folder.h"
#include "history/history.h"
#include "history/history_index.h"
#include "history/swap_journal_file.h"
#include "history/undo_entries.h"
#include "history/work_note.h"

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
        path = (to_ / Path{path}.lexically_normal().lexically_relative(from_)).native();
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

} // namespace kestrova
