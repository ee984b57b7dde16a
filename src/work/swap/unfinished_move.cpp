#include "swap/unfinished_move.h"

#include "core/look.h"
#include "core/name_list.h"
#include "core/removal.h"
#include "history/moved_homes.h"
#include "session/held_folders.h"
#include "session/operation.h"
#include "session/telling.h"
#include "words/moving.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// A folder in which nothing but the lock lies goes.
void RemoveEmptyFolder(FolderLocks& locks, const Path& folder)
{
    std::vector<platform::FolderEntry> entries;
    if (platform::ListFolder(folder, entries) ||
        std::any_of(entries.begin(), entries.end(),
                    [](const auto& entry) { return entry.name != lockFileName; }))
        return;
    locks.Release(folder);
    (void)platform::Unlink(folder / lockFileName);
    (void)platform::RemoveFolder(folder); // an empty folder that stays is no harm
}

std::string NamesOf(const std::vector<Path>& paths)
{
    std::vector<std::string> names;
    for (const Path& path : paths)
        names.push_back(TextOf(path));
    return ShownNames(names);
}

bool NotEnded(Host& host, const MoveNote& note, const Failure& failure)
{
    TellFailure(host, GetMsg(Msg::MoveNotEnded, {Readable(note.to)}), failure);
    return false;
}

/// The list names the new folder.
bool EndIt(Host& host, const Folders& folders, FolderLocks& locks, const MoveNote& note)
{
    if (const auto followed = FollowMovedHomes(folders, note.from, note.to); !followed)
        return NotEnded(host, note, followed.Error());
    if (!DoneOrTold(host, HoldFolder(locks, note.from)))
        return true; // another program is at work there; the next start sees to it
    const auto wait = host.BeginProgress(ProgressWindow::Wait, GetMsg(Msg::EndingMove));
    wait->AllowStop();
    const auto stayed =
        ClearOldFolder(host, folders, locks, note, nullptr, [&] { return wait->Step(); });
    locks.Release(note.from);
    if (!stayed)
        return NotEnded(host, note, stayed.Error()) || stayed.Error().code == ErrorCode::Stopped;
    host.Tell(Tone::Warning, GetMsg(Msg::MoveEnded, {Readable(note.to), Readable(note.from)}));
    if (!stayed->empty())
        host.Tell(Tone::Warning, GetMsg(Msg::MoveOldStays, {NamesOf(*stayed)}));
    return true;
}

/// The list names the old folder still.
bool TakeItBack(Host& host, const Folders& folders, FolderLocks& locks, const MoveNote& note)
{
    const auto isThere = IsFolder(note.from);
    if (!isThere || !*isThere) {
        if (const auto dropped = DropMoveNote(folders); !dropped)
            return NotEnded(host, note, dropped.Error());
        host.Tell(Tone::Warning,
                  GetMsg(Msg::MoveFolderAway, {Readable(note.from), Readable(note.to)}));
        return true;
    }
    if (!DoneOrTold(host, HoldFolder(locks, note.to)))
        return true; // another program is at work there; the next start sees to it
    const auto wait = host.BeginProgress(ProgressWindow::Wait, GetMsg(Msg::EndingMove));
    const auto stayed = TakeMoveBack(folders, locks, note, [&] { return wait->Step(), true; });
    locks.Release(note.to);
    if (!stayed) {
        TellFailure(host, GetMsg(Msg::MoveErrorRemoving) + Readable(note.to), stayed.Error());
        return true;
    }
    host.Tell(Tone::Warning, GetMsg(Msg::MoveTakenBack, {Readable(note.from), Readable(note.to)}));
    if (!stayed->empty())
        host.Tell(Tone::Warning, GetMsg(Msg::MoveCopyStays, {NamesOf(*stayed)}));
    return true;
}

/// Nobody can tell which folder counts.
bool LetMoveGo(Host& host, const Folders& folders, const MoveNote& note, const Failure& failure,
               bool letGo)
{
    if (!letGo) {
        TellFailure(host,
                    GetMsg(Msg::MoveListNotRead,
                           {Readable(note.archive), Readable(note.from), Readable(note.to)}),
                    failure);
        return false;
    }
    if (const auto dropped = DropMoveNote(folders); !dropped)
        return NotEnded(host, note, dropped.Error());
    host.Tell(Tone::Warning, GetMsg(Msg::MoveLetGo, {Readable(note.from), Readable(note.to)}));
    return true;
}

bool SetMoveNoteAside(Host& host, const Folders& folders)
{
    const auto aside = RenameAside(MoveNotePath(folders));
    if (!aside)
        return DoneOrTold(host, aside.Error());
    host.Tell(Tone::Error, GetMsg(Msg::MoveNoteDamaged, {TextOf(*aside)}));
    return true;
}

} // namespace

Result<std::vector<Path>> TakeMoveBack(const Folders& folders, FolderLocks& locks,
                                       const MoveNote& note, const Heartbeat& heartbeat)
{
    const auto isThere = IsFolder(note.to);
    if (!isThere)
        return isThere.Error();
    if (*isThere)
        if (auto removed = RemoveCopies(note, heartbeat); !removed)
            return removed.Error();
    if (note.madeTo)
        RemoveEmptyFolder(locks, note.to);
    if (auto dropped = DropMoveNote(folders); !dropped)
        return dropped.Error();
    return *isThere ? WhatStayed(note.to) : std::vector<Path>{};
}

Result<std::vector<Path>> ClearOldFolder(Host& host, const Folders& folders, FolderLocks& locks,
                                         const MoveNote& note, const WholeTree* copied,
                                         const Heartbeat& heartbeat)
{
    const auto isThere = IsFolder(note.from);
    std::vector<Path> stayed;
    if (!isThere || *isThere) {
        const auto removed = RemoveMoved(note, copied, heartbeat);
        if (!removed && removed.Error().code == ErrorCode::Stopped)
            return removed.Error();
        if (!removed)
            TellFailure(host, GetMsg(Msg::MoveErrorRemoving) + removed.Error().subject,
                        removed.Error());
        stayed = WhatStayed(note.from);
        RemoveEmptyFolder(locks, note.from);
    }
    if (auto dropped = DropMoveNote(folders); !dropped)
        return dropped.Error();
    return stayed;
}

bool EndUnfinishedMove(const SwapParts& parts, const Whereabouts& said)
{
    const auto found = ReadMoveNote(parts.folders);
    if (!found && found.Error().code == ErrorCode::Damaged)
        return SetMoveNoteAside(parts.host, parts.folders);
    if (!found)
        return DoneOrTold(parts.host, found.Error());
    if (!*found)
        return true;
    const Operation running{parts};
    const MoveNote& note = **found;
    const auto listed = FolderOfList(parts.settings, note.archive);
    if (!listed)
        return LetMoveGo(parts.host, parts.folders, note, listed.Error(), said.letGo);
    const auto isListed = [&](const std::string& folder) {
        return *listed == Path{folder} || IsSameFolder(*listed, folder);
    };
    if (isListed(note.to))
        return EndIt(parts.host, parts.folders, parts.locks, note);
    if (isListed(note.from))
        return TakeItBack(parts.host, parts.folders, parts.locks, note);
    return LetMoveGo(parts.host, parts.folders, note, {},
                     true); // the list was given another folder since
}

} // namespace kestrova
