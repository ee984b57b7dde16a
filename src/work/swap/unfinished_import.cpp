#include "swap/unfinished_import.h"

#include "originals/import_return.h"
#include "session/operation.h"
#include "session/telling.h"
#include "swap/folder_guard.h"
#include "swap/lent_folder.h"
#include "words/wads.h"

namespace kestrova
{

namespace
{

bool NotTakenBack(Host& host, const Failure& failure)
{
    TellFailure(host, GetMsg(Msg::ImportNotTakenBack), failure);
    return false;
}

bool LetImportGo(Host& host, const Folders& folders, const ImportNote& note,
                 const Whereabouts& said)
{
    const std::string folder = Readable(note.folder.path);
    if (!said.letGo) {
        host.Tell(Tone::Error, GetMsg(Msg::ImportFolderGone, {folder}));
        return true;
    }
    if (const auto dropped = DropImportUnderway(folders, note); !dropped)
        return NotTakenBack(host, dropped.Error());
    host.Tell(Tone::Warning, GetMsg(Msg::ImportLetGo, {folder}));
    return true;
}

bool TakeBackIn(Session& session, const Path& folder, const ImportNote& note)
{
    Folders folders = session.Folders();
    folders.trle = folder;
    EndForgottenWork(session);
    if (!MayChangeTrle(session, folders))
        return false;
    if (const auto back = ReturnImport(session.machine, folders, note, ImportEnd::Recovered); !back)
        return NotTakenBack(session.host, back.Error());
    const bool wasRedone = note.phase == ImportPhase::Undoing && note.isUndone;
    session.host.Tell(Tone::Warning,
                      GetMsg(wasRedone ? Msg::ImportRedoneLate : Msg::ImportTakenBack));
    return true;
}

/// It is whole, and only its note has to become the entry.
bool EndImport(Host& host, const Folders& folders, const ImportNote& note)
{
    if (const auto ended = NoteToImportEntry(folders, note); !ended)
        return NotTakenBack(host, ended.Error());
    host.Tell(Tone::Warning, GetMsg(Msg::ImportEndedLate));
    return true;
}

} // namespace

bool TakeImportBack(Session& session, const Whereabouts& said)
{
    const auto note = ReadImportUnderway(session.Folders());
    if (!note && note.Error().code == ErrorCode::Damaged) {
        const auto aside = SetImportNoteAside(session.Folders());
        if (!aside)
            return NotTakenBack(session.host, aside.Error());
        session.host.Tell(Tone::Error, GetMsg(Msg::ImportNoteDamaged, {TextOf(*aside)}));
        return true;
    }
    if (!note)
        return NotTakenBack(session.host, note.Error());
    if (!*note)
        return true;
    const Operation running{session};
    if ((*note)->phase == ImportPhase::Done)
        return EndImport(session.host, session.Folders(), **note);
    const Path folder = FindMarked(session.TrleFolder(), (*note)->folder, said);
    if (folder.empty())
        return LetImportGo(session.host, session.Folders(), **note, said);
    if (!HoldMarked(session.host, session.locks, folder))
        return false;
    const bool isBack = TakeBackIn(session, folder, **note);
    if (folder != session.TrleFolder())
        session.locks.Release(folder);
    return isBack;
}

} // namespace kestrova
