#include "swap/mend_after_restart.h"

#include "archive/level_folders.h"
#include "core/copying.h"
#include "core/look.h"
#include "core/name_list.h"
#include "core/name_set.h"
#include "core/removal.h"
#include "formats/program_folder.h"
#include "history/swap_journal_file.h"
#include "session/telling.h"
#include "storage/game_files.h"
#include "swap/level_placements.h"
#include "swap/placements.h"
#include "words/swap.h"

#include <unordered_map>

namespace kestrova
{

void MendAfterRestart(const SwapParts& parts, LevelCode code)
{
    const auto found = ReadOwner(parts.folders); // the next occasion may be able to
    const auto& owner = found ? *found : std::optional<OwnerRecord>{};
    if (!owner || owner->bootId == parts.machine.BootId())
        return;
    WorkFolder staging{InFolder(parts.folders.trle, OnDisk::DirReady)};
    std::vector<Placement> placements;
    if (!ReadyPlacements(parts, code, staging.Folder(), placements))
        return;
    std::unordered_map<std::string, OwnedFile> listed; // by folded name
    for (const OwnedFile& file : owner->added)
        listed.emplace(FoldCase(file.name), file);
    NameSet again;
    std::vector<OwnedFile> standing;
    std::vector<std::string> mended;
    OwnerRecord record = *owner;
    for (const Placement& placement : placements) {
        const Path target = ResolvePath(parts.folders.trle / placement.relative);
        const auto facts = LookAt(target);
        if (!facts) {
            TellFailure(parts.host, GetMsg(Msg::SomeFilesNotCopied, {Readable(placement.target)}),
                        facts.Error());
            return;
        }
        const auto known = listed.find(FoldCase(placement.target));
        const bool ours = facts->kind == platform::FileKind::Missing || facts->size == 0 ||
                          (known != listed.end() && IsAsListed(known->second, *facts));
        if (!ours || SameContent(placement.file.path, target))
            continue;
        if (const auto status = CopyFileOver(placement.file.path, target); !status) {
            TellFailure(parts.host, GetMsg(Msg::SomeFilesNotCopied, {Readable(placement.target)}),
                        status.Error());
            return;
        }
        mended.push_back(Readable(placement.target));
        again.Add(placement.target);
        standing.push_back(AsItStands(placement.target, target));
    }
    std::erase_if(record.added, [&](const OwnedFile& file) { return again.Has(file.name); });
    record.added.insert(record.added.end(), standing.begin(), standing.end());
    if (!mended.empty())
        parts.host.Tell(Tone::Plain, GetMsg(Msg::MendedFiles, {ShownNames(mended)}));
    (void)WriteOwner(parts.machine, parts.folders,
                     std::move(record)); // otherwise the files are compared once more
}

} // namespace kestrova
