#include "upkeep/copy_more_info.h"

#include "archive/archive_saving.h"
#include "archive/level_document.h"
#include "archive/level_folders.h"
#include "core/copying.h"
#include "formats/level_folder.h"
#include "session/operation.h"
#include "session/telling.h"
#include "words/intake.h"
#include "words/storage.h"
#include "words/upkeep.h"

namespace kestrova
{

namespace
{

Status CopyDocument(const Folders& folders, const Archive& archive, const LevelRecord& level)
{
    const auto disc = LevelFolderOf(folders, archive, level.levelCode);
    if (!disc)
        return disc.Error();
    const auto found = FindDocument(InFolder(*disc, OnDisk::DirFiles), level.moreInfoFile);
    if (!found)
        return found.Error();
    const std::optional<Path>& document = *found;
    if (!document)
        return MakeFailure(ErrorCode::Missing, TextOf(*disc));
    const Path files = InFolder(LevelHomeOf(folders, level.levelCode), OnDisk::DirFiles);
    if (auto made = MakeFolders(files); !made)
        return made;
    CopyOptions plain;
    plain.rights = plainRights;
    return CopyFileOver(*document, files / document->filename(), plain);
}

} // namespace

bool CopyMoreInfoFiles(Session& session)
{
    const Operation operation{session};
    if (!HasArchive(session.host, session.archive))
        return false;
    if (!IsArchiveOnCd(session.archive)) {
        session.host.Tell(Tone::Plain, GetMsg(Msg::MoreInfoAllOnHd));
        return true;
    }
    bool all = true;
    const auto progress =
        session.host.BeginProgress(ProgressWindow::Progress, GetMsg(Msg::FileCopyLabel));
    const std::size_t count = session.archive.levels.size();
    for (std::size_t i = 0; i < count; ++i) {
        progress->SetBar(i + 1, count);
        progress->Step();
        const LevelRecord& level = session.archive.levels[i];
        if (level.cdNumber == 0 || Trim(level.moreInfoFile).empty())
            continue;
        if (const auto copied = CopyDocument(session.Folders(), session.archive, level); !copied) {
            all = false;
            TellFailure(session.host,
                        GetMsg(Msg::MoreInfoErrorCopying) + " " +
                            Readable(Trim(level.moreInfoFile)),
                        copied.Error());
        }
    }
    return all;
}

} // namespace kestrova
