#include "upkeep/archive_sizes.h"

#include "archive/archive_saving.h"
#include "archive/level_sizes.h"
#include "words/upkeep.h"

namespace kestrova
{

bool ShowArchiveSizes(Session& session)
{
    if (!HasArchive(session.host, session.archive))
        return false;
    const bool measured = RecomputeArchiveSize(session, true);
    session.list.Refresh();
    const ArchiveHeader& archive = session.archive.header;
    session.host.Tell(Tone::Plain,
                      GetMsg(Msg::ArchiveSizes,
                             {FormatSize(archive.mainFolderSize), lineBreak,
                              FormatSize(archive.secondaryFolderSize), lineBreak,
                              FormatSize(archive.mainFolderSize + archive.secondaryFolderSize)}),
                      measured ? std::string{} : GetMsg(Msg::ArchiveSizesStopped));
    return measured;
}

} // namespace kestrova
