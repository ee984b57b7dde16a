#include "upkeep/repair_backup.h"

#include "core/copying.h"
#include "core/look.h"
#include "core/staged_file.h"
#include "originals/backup_sums.h"
#include "originals/folder_in_the_way.h"
#include "platform/file_content.h"
#include "words/check.h"

namespace kestrova
{

namespace
{

Failure InTheWay(const Path& place)
{
    return InWords(ErrorCode::Refused, GetMsg(Msg::BackupInTheWay, {TextOf(place)}));
}

/// What a check noted of a folder that stands in a file's place was never the backup's.
Status ForgetBelow(const Folders& folders, const Path& relative)
{
    const auto noted = NotedBackupFiles(folders);
    if (!noted)
        return noted.Error();
    std::vector<Path> below;
    for (const NotedFile& file : *noted)
        if (file.name.starts_with(relative.native() + "/"))
            below.emplace_back(file.name);
    return ForgetBackupFiles(folders, below);
}

/// What stands in the file's place is in the vault. Nothing gets another name inside the backup,
/// which is restored with all that it holds.
Status MakeRoom(Machine& machine, const Folders& folders, const Path& backup, const Path& relative)
{
    const Path place = backup / relative;
    if (auto status = ForgetBelow(folders, relative); !status)
        return status;
    if (auto status = RemoveFolderInTheWay(machine, folders, backup, relative); !status)
        return status;
    const auto isFree = IsFree(place);
    if (!isFree || *isFree)
        return isFree ? Status{} : Status{isFree.Error()};
    const Keeping keeping = KeepReplaced(machine, folders, backup, {relative});
    if (!keeping.failed.empty() && platform::FactsOfLink(place).kind == platform::FileKind::File)
        return MoveUnreadable(folders, backup, relative);
    return keeping.failed.empty() && keeping.contents.contains(relative) ? Status{}
                                                                         : InTheWay(place);
}

/// The folders of the file, which may be links to folders elsewhere.
Status MakeFoldersOf(const Path& backup, const Path& relative)
{
    Path folder = backup;
    for (const Path& name : relative.parent_path()) {
        folder /= name;
        const auto isFree = IsFree(folder);
        const auto isFolder = IsFolder(folder);
        if (!isFree || !isFolder)
            return isFree ? isFolder.Error() : isFree.Error();
        if (!*isFree && !*isFolder)
            return InTheWay(folder);
    }
    return MakeFolders(folder);
}

/// What may be started stays so: as the file that stands there, else as the Level Editor's own.
std::uint32_t RightsFor(const Folders& folders, const Path& place, const Path& relative)
{
    for (const Path& file : {place, folders.trle / relative}) {
        const auto facts = LookAt(file);
        if (facts && facts->kind == platform::FileKind::File)
            return plainRights | (facts->mode & 0777U);
    }
    return plainRights;
}

/// Nothing but what was noted comes in.
Status PutBack(Machine& machine, const Folders& folders, const LevelFault& fault,
               const Path& source)
{
    const Path backup = ResolvePath(folders.Backup());
    const Path place = backup / fault.stored;
    if (auto status = MakeFoldersOf(backup, fault.stored); !status)
        return status;
    const StagedPlace made{place};
    CopyOptions exact;
    exact.verify = Verify::Content;
    exact.flush = true;
    exact.rights = RightsFor(folders, place, fault.stored);
    exact.spelled = true;
    if (auto status = CopyFileOver(source, made.Staged(), exact); !status)
        return status;
    std::string hash;
    if (platform::HashOfFile(made.Staged(), hash) || hash != fault.noted->hash)
        return MakeFailure(ErrorCode::Differs, TextOf(source));
    if (auto status = MakeRoom(machine, folders, backup, fault.stored); !status)
        return status;
    if (const auto failure = platform::Rename(made.Staged(), place))
        return MakeFailure(ErrorCode::CannotWrite, TextOf(place), failure);
    return FlushFolder(place.parent_path());
}

} // namespace

Result<RepairedLevel> RepairBackup(Machine& machine, const Folders& folders,
                                   const CheckedLevel& checked, RepairSources& sources,
                                   ProgressScope& progress)
{
    const Heartbeat beat = [&] { return progress.Step(); };
    RepairedLevel done;
    for (const LevelFault& fault : checked.faults) {
        if (!fault.noted)
            continue;
        progress.SetLabel(GetMsg(Msg::RepairLooking, {fault.file}));
        const auto found = sources.Find(originalCode, *fault.noted, beat);
        if (!beat())
            return MakeFailure(ErrorCode::Stopped, {});
        if (!found) {
            done.left.push_back({fault, GetMsg(Msg::BackupNowhere)});
            continue;
        }
        if (const auto put = PutBack(machine, folders, fault, found->file))
            done.repaired.push_back({fault.file, found->where});
        else
            done.left.push_back({fault, put.Error().sentence.empty()
                                            ? GetMsg(Msg::BackupNotPut, {put.Error().reason})
                                            : put.Error().sentence});
    }
    return done;
}

} // namespace kestrova
