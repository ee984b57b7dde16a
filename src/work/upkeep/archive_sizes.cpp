#include "upkeep/archive_sizes.h"

#include "archive/archive_saving.h"
#include "archive/level_sizes.h"
#include "core/size_words.h"
#include "session/telling.h"
#include "words/upkeep.h"

namespace kestrova
{

bool ShowArchiveSizes(const ArchiveParts& parts)
{
    if (!HasArchive(parts.host, parts.archive))
        return false;
    const Status measured = RecomputeArchiveSize(parts, true);
    const bool isStopped = !measured && measured.Error().code == ErrorCode::Stopped;
    DoneOrTold(parts.host, measured);
    parts.list.Refresh();
    const ArchiveHeader& archive = parts.archive.header;
    parts.host.Tell(Tone::Plain,
                    GetMsg(Msg::ArchiveSizes,
                           {SizeInWords(archive.mainFolderSize), lineBreak,
                            SizeInWords(archive.secondaryFolderSize), lineBreak,
                            SizeInWords(archive.mainFolderSize + archive.secondaryFolderSize)}),
                    isStopped ? GetMsg(Msg::ArchiveSizesStopped) : std::string{});
    return !isStopped;
}

} // namespace kestrova
