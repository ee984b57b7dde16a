#include "upkeep/copy_more_info.h"

#include "archive/archive_saving.h"
#include "archive/level_document.h"
#include "archive/level_folders.h"
#include "core/copying.h"
#include "core/look.h"
#include "formats/level_folder.h"
#include "session/operation.h"
#include "session/telling.h"
#include "upkeep/file_names.h"
#include "upkeep/out_of_files.h"
#include "words/intake.h"
#include "words/moving.h"
#include "words/storage.h"
#include "words/upkeep.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// Copies documents from one disc after the other.
class DocumentCopies
{
public:
    DocumentCopies(Host& host, const Folders& folders, const Archive& archive)
        : host_(host), folders_(folders), archive_(archive)
    {
    }

    Status Copy(const LevelRecord& level)
    {
        // Whoever gave up on a disc is not asked for it with each level that lies there.
        const DiscWish wish = givenUp_ == level.cdNumber ? DiscWish::Look : DiscWish::Ask;
        const auto disc = FilesFolderOf(folders_, archive_, level.levelCode, wish);
        if (!disc) {
            givenUp_ = level.cdNumber;
            return disc.Error();
        }
        const auto found = FindDocument(*disc, level.moreInfoFile);
        if (!found)
            return found.Error();
        if (!*found)
            return MakeFailure(ErrorCode::Missing, TextOf(*disc));
        return Put(**found, InFolder(LevelHomeOf(folders_, level.levelCode), OnDisk::DirFiles));
    }

private:
    /// What somebody wrote into an earlier copy is kept outside of the level's files.
    Status Put(const Path& document, const Path& files)
    {
        if (auto made = MakeFolders(files); !made)
            return made;
        const Path target = ResolvePath(files / document.filename());
        const auto isThere = IsFile(target);
        const auto same =
            isThere && *isThere ? HoldSameBytes(document, target) : Result<bool>{false};
        if (!isThere || !same)
            return isThere ? same.Error() : isThere.Error();
        if (*same)
            return {};
        if (*isThere) {
            const auto aside = TakeOutOfFiles(files.parent_path(), OnDisk::DirReplaced, target);
            if (!aside)
                return aside.Error();
            host_.Tell(Tone::Warning, GetMsg(Msg::ReplacedByDisc, {TextOf(*aside)}));
        }
        CopyOptions plain;
        plain.verify = Verify::Content;
        plain.rights = plainRights;
        return CopyFileOver(document, target, plain);
    }

    Host& host_;
    const Folders folders_;
    const Archive& archive_;
    std::int32_t givenUp_ = 0;
};

/// Levels with a document on a disc, disc after disc.
std::vector<const LevelRecord*> DocumentsOnDiscs(const Archive& archive)
{
    std::vector<const LevelRecord*> levels;
    for (const LevelRecord& level : archive.levels)
        if (level.cdNumber != 0 && !Trim(level.moreInfoFile).empty())
            levels.push_back(&level);
    std::stable_sort(levels.begin(), levels.end(),
                     [](const LevelRecord* one, const LevelRecord* other) {
                         return one->cdNumber < other->cdNumber;
                     });
    return levels;
}

} // namespace

bool CopyMoreInfoFiles(const ArchiveParts& parts)
{
    const Operation operation{parts};
    if (!HasArchive(parts.host, parts.archive))
        return false;
    if (!IsArchiveOnCd(parts.archive)) {
        parts.host.Tell(Tone::Plain, GetMsg(Msg::MoreInfoAllOnHd));
        return true;
    }
    bool all = true;
    const auto progress =
        parts.host.BeginProgress(ProgressWindow::Progress, GetMsg(Msg::FileCopyLabel));
    progress->AllowStop();
    const std::vector<const LevelRecord*> levels = DocumentsOnDiscs(parts.archive);
    DocumentCopies copies{parts.host, parts.folders, parts.archive};
    for (std::size_t i = 0; i < levels.size(); ++i) {
        progress->SetBar(i, levels.size());
        if (!progress->Step())
            return false; // what was copied stays; the others follow the next time
        const auto copied = copies.Copy(*levels[i]);
        if (copied)
            continue;
        all = false;
        TellFailure(parts.host,
                    GetMsg(Msg::MoreInfoErrorCopying) + " " +
                        Readable(Trim(levels[i]->moreInfoFile)),
                    copied.Error());
    }
    return all;
}

} // namespace kestrova
