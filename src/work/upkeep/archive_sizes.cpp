#include "upkeep/archive_sizes.h"

#include "archive/archive_saving.h"
#include "archive/level_sizes.h"
#include "core/size_words.h"
#include "session/telling.h"
#include "words/upkeep.h"

namespace kestrova
{

bool ShowArchiveSizes(Session& session)
{
    if (!HasArchive(session.host, session.archive))
        return false;
    const Status measured = RecomputeArchiveSize(session, true);
    const bool isStopped = !measured && measured.Error().code == ErrorCode::Stopped;
    DoneOrTold(session.host, measured);
    session.list.Refresh();
    const ArchiveHeader& archive = session.archive.header;
    session.host.Tell(Tone::Plain,
                      GetMsg(Msg::ArchiveSizes,
                             {SizeInWords(archive.mainFolderSize), lineBreak,
                              SizeInWords(archive.secondaryFolderSize), lineBreak,
                              SizeInWords(archive.mainFolderSize + archive.secondaryFolderSize)}),
                      isStopped ? GetMsg(Msg::ArchiveSizesStopped) : std::string{});
    return !isStopped;
}

} // namespace kestrova
