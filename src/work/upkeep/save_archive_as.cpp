#include "upkeep/save_archive_as.h"

#include "archive/archive_saving.h"
#include "session/operation.h"
#include "session/telling.h"
#include "upkeep/new_archive.h"
#include "words/archive.h"
#include "words/upkeep.h"

namespace kestrova
{

bool AskSaveArchiveAs(const ArchiveParts& parts)
{
    const Operation operation{parts};
    if (!HasArchive(parts.host, parts.archive))
        return false;
    const auto file =
        parts.host.ChooseSaveFile(GetMsg(Msg::SaveArchiveTitle), GetMsg(Msg::SaveArchiveFilter),
                                  parts.folders.program, TextOf(parts.archive.file.filename()));
    if (!file)
        return true;
    if (const auto status = WriteArchive(parts, *file); !status) {
        TellFailure(parts.host, GetMsg(Msg::ErrorSavingArchive) + TextOf(*file), status.Error());
        return false;
    }
    parts.list.Refresh();
    return true;
}

} // namespace kestrova
