#include "upkeep/save_archive_as.h"

#include "archive/archive_saving.h"
#include "session/operation.h"
#include "session/telling.h"
#include "upkeep/new_archive.h"
#include "words/archive.h"
#include "words/upkeep.h"

namespace kestrova
{

bool AskSaveArchiveAs(Session& session)
{
    const Operation operation{session};
    if (!HasArchive(session.host, session.archive))
        return false;
    const auto file = session.host.ChooseSaveFile(
        GetMsg(Msg::SaveArchiveTitle), GetMsg(Msg::SaveArchiveFilter), session.programFolder,
        TextOf(session.ArchivePath().filename()));
    if (!file)
        return true;
    if (const auto status = WriteArchive(session, *file); !status) {
        TellFailure(session.host, GetMsg(Msg::ErrorSavingArchive) + TextOf(*file), status.Error());
        return false;
    }
    session.list.Refresh();
    return true;
}

} // namespace kestrova
