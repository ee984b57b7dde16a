#include "originals/undo_import.h"

#include "core/copying.h"
#include "core/look.h"
#include "history/swap_journal_file.h"
#include "history/undo_entries.h"
#include "originals/import_return.h"
#include "words/wads.h"

namespace kestrova
{

namespace
{

/// What stands at the places now, by hash beside the next entry, flushed. A place that is as it is
/// to become is none.
Status KeepWhatGoes(const Folders& folders, ImportNote& note, const Heartbeat& alive)
{
    const Path contents = ImportContents(folders, note.next);
    if (auto made = MakeFolders(contents); !made)
        return made;
    const auto beat = [&alive](std::uint64_t) { return !alive || alive(); };
    for (ImportPlace& place : note.places) {
        if (!beat(0))
            return MakeFailure(ErrorCode::Stopped, {});
        const auto now = HashOfPlace(folders, place);
        if (!now)
            return now.Error();
        place.came = *now;
        if (now->empty() || *now == place.was)
            continue;
        const auto isThere = IsFile(contents / *now);
        if (!isThere)
            return isThere.Error();
        if (*isThere)
            continue;
        if (auto kept = CopyFileOver(PlaceOfImport(folders, place), contents / *now,
                                     {Verify::Content, false, false, beat, 0, true});
            !kept)
            return kept;
    }
    std::erase_if(note.places, [](const ImportPlace& place) { return place.came == place.was; });
    return FlushTrees(folders);
}

} // namespace

Status MayUndoImport(const Folders& folders, const ImportNote& entry, const Heartbeat& beat)
{
    const auto isSame = HasMark(folders.trle, entry.folder);
    if (!isSame)
        return isSame.Error();
    if (!*isSame && folders.trle != Path{entry.folder.path})
        return InWords(ErrorCode::Refused, GetMsg(Msg::ImportOtherFolder, {entry.folder.path}));
    for (const ImportPlace& place : entry.places) {
        if (beat && !beat())
            return MakeFailure(ErrorCode::Stopped, {});
        const std::string file = TextOf(PlaceOfImport(folders, place));
        const auto now = HashOfPlace(folders, place);
        if (!now)
            return now.Error();
        if (!now->empty() && *now != place.came && *now != place.was)
            return InWords(ErrorCode::Differs, GetMsg(Msg::ImportChangedSince, {file}));
        if (place.was.empty())
            continue;
        const auto content = HashIfThere(ImportContents(folders, entry.id) / place.was);
        if (!content)
            return content.Error();
        if (*content != place.was && *now != place.was)
            return InWords(ErrorCode::Missing, GetMsg(Msg::ImportContentGone, {file}));
    }
    return {};
}

Status UndoImport(Machine& machine, const Folders& folders, ImportNote entry,
                  const Heartbeat& alive)
{
    entry.next = NextUndoId(folders);
    entry.madeNs = machine.NowNs();
    entry.phase = ImportPhase::Undoing;
    // They may have been copied to another disk since, under the same names.
    if (auto folder = MarkOf(folders.trle))
        entry.folder = std::move(*folder);
    if (auto backup = MarkOf(folders.Backup()))
        entry.backup = std::move(*backup);
    auto begun = KeepWhatGoes(folders, entry, alive);
    if (begun)
        begun = WriteImportUnderway(folders, entry);
    if (!begun) {
        if (!ImportWaits(folders))
            DropImport(folders, entry.next); // it has no entry yet, but contents
        return begun;
    }
    return ReturnImport(machine, folders, entry, ImportEnd::Recovered, alive);
}

} // namespace kestrova
