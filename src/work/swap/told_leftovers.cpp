#include "swap/told_leftovers.h"

#include "core/look.h"
#include "core/name_list.h"
#include "history/standing.h"
#include "history/swap_journal_file.h"
#include "originals/vault.h"
#include "swap/backup_state.h"
#include "swap/folder_guard.h"
#include "swap/owned_files.h"
#include "swap/placements.h"
#include "swap/return_to_original.h"
#include "words/restore.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// Whether the level's file still stands there, and not the original in its place.
bool Stays(const Folders& folders, const OwnedFile& file)
{
    const auto relative = SafeRelative(file.name);
    return relative && IsFile(folders.trle / *relative).ValueOr(true) &&
           !SameContent(folders.trle / *relative, folders.Backup() / *relative);
}

/// True when the place of an original is free, or what stands there is safe: an earlier level's, as
/// it was put there, or kept now.
bool MayGiveWay(Machine& machine, const Folders& folders, const OwnerRecord& owner,
                const std::string& name, LeftInTrle& left)
{
    const Path place = PlaceOfOriginal(folders, *SafeRelative(name));
    const auto facts = LookAt(folders.trle / place);
    if (!facts)
        return false;
    if (facts->kind != platform::FileKind::File)
        return facts->kind == platform::FileKind::Missing;
    if (OwnedNames{owner.added}.IsAsPut(name, *facts))
        return true;
    const Keeping keeping = KeepOriginals(machine, folders, {place});
    for (const Path& kept : keeping.kept)
        left.kept.push_back(Readable(ToBackslashes(kept)));
    return keeping.failed.empty();
}

/// Originals that a level does not replace and that could not be brought back before it came in
/// come back beside it.
void BringOwed(const SwapParts& parts, const Standing& standing)
{
    if (!standing.owner || standing.owner->owed.empty() ||
        !ProgramsInTrle(parts, parts.folders).empty() || BackupIsAway(parts.folders))
        return;
    OwnerRecord now = *standing.owner;
    LeftInTrle left;
    const auto came = std::erase_if(now.owed, [&](const std::string& name) {
        const auto relative = SafeRelative(name);
        if (!relative || !IsFile(parts.folders.Backup() / *relative).ValueOr(true))
            return true; // nothing that could ever come
        if (!MayGiveWay(parts.machine, parts.folders, *standing.owner, name, left) ||
            !RestoreOriginal(parts.folders, *relative))
            return false;
        std::erase_if(now.added,
                      [&](const OwnedFile& file) { return EqualNames(file.name, name); });
        std::erase(now.overwritten, name);
        return true;
    });
    if (came > 0)
        (void)WriteOwner(parts.machine, parts.folders,
                         std::move(now)); // otherwise they are looked for once more
    TellLeftovers(parts.host, parts.folders, left);
}

} // namespace

bool ShouldGo(const Folders& folders, const PreferencesRecord& preferences, const OwnedFile& file)
{
    return Stays(folders, file) && !StaysWithCompactBackup(preferences, file.name);
}

void ClearToldLeftovers(const SwapParts& parts)
{
    const auto standing =
        LookAtStanding(parts.folders, parts.archive); // otherwise the next occasion may be able to
    if (standing && !IsOriginalButForLeftovers(parts.folders, *standing))
        BringOwed(parts, *standing);
    if (!standing || !IsOriginalButForLeftovers(parts.folders, *standing) ||
        (standing->owner->overwritten.empty() && standing->owner->added.empty()) ||
        !ProgramsInTrle(parts, parts.folders).empty() || BackupIsAway(parts.folders))
        return;
    const OwnerRecord& owner = *standing->owner;
    SwapJournal lists;
    lists.restore = owner.overwritten;
    lists.remove = owner.added;
    LeftInTrle left;
    DeleteBrought(parts, parts.folders, owner.added, originalCode,
                  left); // told already; only what is kept is
    const auto restored = RestoreMissing(parts.folders, parts.preferences, lists, left); // new
    if (!left.kept.empty())
        parts.host.Tell(Tone::Warning, GetMsg(Msg::FilesKept, {ShownNames(left.kept)}));
    if (!restored)
        return; // nothing is known of what waits; the next occasion tries again
    OwnerRecord now = owner;
    now.overwritten = std::move(left.overwritten);
    now.owed = now.overwritten;
    std::erase_if(now.added, [&](const OwnedFile& file) { return !Stays(parts.folders, file); });
    if (!IsOriginals(parts.folders, standing->level) &&
        std::none_of(now.added.begin(), now.added.end(), [&](const OwnedFile& file) {
            return ShouldGo(parts.folders, parts.preferences, file);
        }))
        (void)DeleteFile(
            parts.folders.Marker()); // of a level that is gone; the next start tries again
    if (now.added.size() != owner.added.size() || now.overwritten != owner.overwritten ||
        !IsOriginals(parts.folders, standing->level))
        (void)WriteOwner(parts.machine, parts.folders,
                         std::move(now)); // otherwise it is looked at once more
}

} // namespace kestrova
