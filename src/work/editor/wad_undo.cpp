#include "editor/wad_undo.h"

#include "core/names.h"
#include "editor/compile_tom_file.h"
#include "history/swap_journal_file.h"
#include "originals/undo_import.h"
#include "session/operation.h"
#include "session/telling.h"
#include "swap/install.h"
#include "words/wads.h"

namespace kestrova
{

namespace
{

bool WadsNotUndone(Host& host, const ImportNote& entry, const Failure& failure)
{
    const Message words = entry.isUndone ? Msg::ImportNotRedone : Msg::ImportNotUndone;
    TellFailure(host, GetMsg(words, {Readable(entry.subject)}), failure);
    return false;
}

} // namespace

bool IsOfThisFolder(const Folders& folders, const ImportNote& entry)
{
    return folders.trle == Path{entry.folder.path} ||
           HasMark(folders.trle, entry.folder).ValueOr(false);
}

std::optional<ImportNote> NewestImport(const Folders& folders, UndoState state, std::int32_t before)
{
    auto imports = ReadImports(folders);
    if (!imports)
        return {};
    for (auto entry = imports->rbegin(); entry != imports->rend(); ++entry)
        if (entry->isUndone == (state == UndoState::Undone) && entry->id < before &&
            IsOfThisFolder(folders, *entry))
            return std::move(*entry);
    return {};
}

bool UndoWads(Session& session, const ImportNote& entry)
{
    const Operation operation{session};
    const Folders folders = session.Folders();
    if (!MayLend(session) || !RestoreFast(session))
        return false;
    const auto progress = session.host.BeginProgress(
        ProgressWindow::Wait, GetMsg(entry.isUndone ? Msg::ImportRedoing : Msg::ImportUndoing,
                                     {Readable(entry.subject)}));
    progress->AllowStop();
    const Heartbeat beat = [&] { return progress->Step(); };
    auto done = MayUndoImport(folders, entry, beat);
    if (done)
        done = UndoImport(session.machine, folders, entry, beat);
    if (!done && !ImportWaits(folders))
        return done.Error().code != ErrorCode::Stopped &&
               WadsNotUndone(session.host, entry, done.Error());
    if (!done) {
        TellFailure(session.host, GetMsg(Msg::ImportNotTakenBack), done.Error());
        return false;
    }
    BoundImports(folders, session.settings);
    session.list.Refresh();
    return true;
}

bool UndoNewestImport(Session& session, std::string& subject)
{
    const auto imports = ReadImports(session.Folders());
    if (!imports)
        return DoneOrTold(session.host, imports.Error());
    const auto entry = NewestImport(session.Folders());
    if (!entry) {
        session.host.Tell(Tone::Plain, GetMsg(Msg::ImportNoneToUndo));
        return false;
    }
    subject = Readable(entry->subject);
    return UndoWads(session, *entry);
}

} // namespace kestrova
