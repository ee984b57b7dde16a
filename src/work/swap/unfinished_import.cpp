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

bool TakeBackIn(const SwapParts& parts, const Path& folder, const ImportNote& note)
{
    Folders folders = parts.folders;
    folders.trle = folder;
    EndForgottenWork(parts.host, parts.sounds.tools);
    if (!MayChangeTrle(parts, folders))
        return false;
    if (const auto back = ReturnImport(parts.machine, folders, note, ImportEnd::Recovered); !back)
        return NotTakenBack(parts.host, back.Error());
    const bool wasRedone = note.phase == ImportPhase::Undoing && note.isUndone;
    parts.host.Tell(Tone::Warning,
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

bool TakeImportBack(const SwapParts& parts, const Whereabouts& said)
{
    const auto note = ReadImportUnderway(parts.folders);
    if (!note && note.Error().code == ErrorCode::Damaged) {
        const auto aside = SetImportNoteAside(parts.folders);
        if (!aside)
            return NotTakenBack(parts.host, aside.Error());
        parts.host.Tell(Tone::Error, GetMsg(Msg::ImportNoteDamaged, {TextOf(*aside)}));
        return true;
    }
    if (!note)
        return NotTakenBack(parts.host, note.Error());
    if (!*note)
        return true;
    const Operation running{parts};
    if ((*note)->phase == ImportPhase::Done)
        return EndImport(parts.host, parts.folders, **note);
    const Path folder = FindMarked(parts.folders.trle, (*note)->folder, said);
    if (folder.empty())
        return LetImportGo(parts.host, parts.folders, **note, said);
    if (!HoldMarked(parts.host, parts.locks, folder))
        return false;
    const bool isBack = TakeBackIn(parts, folder, **note);
    if (folder != parts.folders.trle)
        parts.locks.Release(folder);
    return isBack;
}

} // namespace kestrova
