#include "upkeep/repair_backup.h"

#include "core/copying.h"
#include "core/look.h"
#include "originals/vault.h"
#include "platform/file_content.h"
#include "words/check.h"

namespace kestrova
{

namespace
{

/// What stands in the file's place is in the vault, or has another name.
Status MakeRoom(Machine& machine, const Folders& folders, const Path& backup, const Path& relative)
{
    const Path place = backup / relative;
    const auto isFree = IsFree(place);
    if (!isFree || *isFree)
        return isFree ? Status{} : Status{isFree.Error()};
    const Keeping keeping = KeepReplaced(machine, folders, backup, {relative});
    if (keeping.failed.empty() && keeping.contents.contains(relative))
        return {};
    return StatusOf(RenameAside(place));
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
    if (auto status = MakeFolders(place.parent_path()); !status)
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

Result<RepairedLevel> RepairBackup(Session& session, const CheckedLevel& checked,
                                   RepairSources& sources, ProgressScope& progress)
{
    const Folders folders = session.Folders();
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
        if (const auto put = PutBack(session.machine, folders, fault, found->file))
            done.repaired.push_back({fault.file, found->where});
        else
            done.left.push_back({fault, GetMsg(Msg::BackupNotPut, {put.Error().reason})});
    }
    return done;
}

} // namespace kestrova
