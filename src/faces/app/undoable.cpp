#include "app/undoable.h"

#include "core/names.h"
#include "editor/wad_undo.h"
#include "history/undo_entries.h"
#include "originals/import_entries.h"
#include "words/undo.h"

#include <algorithm>

namespace kestrova
{

namespace
{

UndoState StateFor(UndoWay way)
{
    return way == UndoWay::Undo ? UndoState::Done : UndoState::Undone;
}

std::optional<Undoable> NewerOf(std::optional<ChangeHead> change, std::optional<ImportNote> import)
{
    if (change && import)
        (change->id > import->id ? import.reset() : change.reset());
    if (change)
        return Undoable{std::move(*change)};
    return import ? std::optional<Undoable>{std::move(*import)} : std::nullopt;
}

} // namespace

std::int32_t NumberOf(const Undoable& one)
{
    return std::visit([](const auto& entry) { return entry.id; }, one);
}

bool IsUndone(const Undoable& one)
{
    return std::visit([](const auto& entry) { return entry.isUndone; }, one);
}

std::string WhatWasDone(const Undoable& one)
{
    if (const auto* const change = std::get_if<ChangeHead>(&one))
        return WhatWasDone(*change);
    return GetMsg(Msg::DidWadsImported, {Readable(std::get<ImportNote>(one).subject)});
}

std::optional<Undoable> NextUndoable(const Folders& folders, const Archive& archive, UndoWay way,
                                     std::int32_t before)
{
    return NewerOf(NextToUndo(folders, archive, way, before),
                   NewestImport(folders, StateFor(way), before));
}

std::optional<Undoable> NewestUndoable(const Folders& folders, UndoWay way)
{
    auto change = NewestUndo(
        folders, [&](const ChangeHead& other) { return other.isUndone == (way == UndoWay::Redo); });
    std::optional<ImportNote> import;
    if (auto imports = ReadImports(folders))
        for (ImportNote& note : *imports)
            if (note.isUndone == (way == UndoWay::Redo))
                import = std::move(note);
    return NewerOf(std::move(change), std::move(import));
}

Result<std::vector<Undoable>> AllUndoable(const Folders& folders, std::vector<Path>& unread)
{
    auto changes = ReadUndoList(folders);
    if (!changes)
        return changes.Error();
    auto imports = ReadImports(folders);
    if (!imports)
        return imports.Error();
    unread = std::move(changes->unread);
    std::vector<Undoable> all(changes->entries.begin(), changes->entries.end());
    all.insert(all.end(), imports->begin(), imports->end());
    std::stable_sort(all.begin(), all.end(), [](const Undoable& a, const Undoable& b) {
        return NumberOf(a) > NumberOf(b);
    });
    return all;
}

} // namespace kestrova
