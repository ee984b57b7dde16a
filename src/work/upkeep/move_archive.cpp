#include "upkeep/move_archive.h"

#include "archive/archive_saving.h"
#include "archive/level_folders.h"
#include "saves/savegame_moves.h"
#include "session/operation.h"
#include "session/telling.h"
#include "upkeep/bring_back.h"
#include "upkeep/move_levels.h"
#include "upkeep/move_target.h"
#include "words/moving.h"

namespace kestrova
{

bool MayMoveArchive(const ArchiveParts& parts)
{
    return HasArchive(parts.host, parts.archive) && SaveArchiveNow(parts) &&
           DoneOrTold(parts.host, ArchiveFolderIsThere(parts.archive)) &&
           DoneOrTold(parts.host, EndEarlierMove(parts));
}

bool MoveArchive(Session& session, const Path& target)
{
    const Operation operation{session};
    if (!MayMoveArchive(session))
        return false;
    if (IsArchiveOnCd(session.archive) &&
        session.host.AskYesNo(GetMsg(Msg::AskMoveFromDiscs, {lineBreak, lineBreak})))
        return MoveArchiveToHd(session, target);
    const Path from = session.Folders().levels;
    const auto tree = ScanArchiveFolder(session.host, from);
    if (!tree && tree.Error().code == ErrorCode::Stopped)
        return false;
    if (!tree)
        return TellFolderNotRead(session.host, tree.Error());
    const auto to = ChooseTarget(session.host, session.machine, {session.Folders(), *tree}, target);
    if (!to || !MoveLevels(session, *tree, *to))
        return false;
    session.list.Refresh();
    session.host.Tell(Tone::Plain, GetMsg(Msg::ArchiveMoved) + TextOf(*to));
    return true;
}

} // namespace kestrova
