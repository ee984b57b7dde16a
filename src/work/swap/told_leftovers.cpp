#include "swap/told_leftovers.h"

#include "core/look.h"
#include "core/name_list.h"
#include "core/staged_file.h"
#include "history/standing.h"
#include "history/swap_journal_file.h"
#include "originals/vault.h"
#include "swap/backup.h"
#include "swap/folder_guard.h"
#include "swap/owned_files.h"
#include "swap/placements.h"
#include "swap/return_to_original.h"
#include "swap/swap_run.h"
#include "words/restore.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// Whether the level's file still stands there, and not the original in its place.
bool Stays(const Session& session, const OwnedFile& file)
{
    const auto relative = SafeRelative(file.name);
    return relative && IsFile(session.TrleFolder() / *relative).ValueOr(true) &&
           !SameContent(session.TrleFolder() / *relative, session.BackupFolder() / *relative);
}

/// True when the place of an original is free, or what stands there is safe: an earlier level's, as
/// it was put there, or kept now.
bool MayGiveWay(Session& session, const OwnerRecord& owner, const std::string& name,
                LeftInTrle& left)
{
    const Path place = PlaceOfOriginal(session, *SafeRelative(name));
    const auto facts = LookAt(session.TrleFolder() / place);
    if (!facts)
        return false;
    if (facts->kind != platform::FileKind::File)
        return facts->kind == platform::FileKind::Missing;
    if (OwnedNames{owner.added}.IsAsPut(name, *facts))
        return true;
    const Keeping keeping = KeepOriginals(session, {place});
    for (const Path& kept : keeping.kept)
        left.kept.push_back(Readable(ToBackslashes(kept)));
    return keeping.failed.empty();
}

/// Originals that a level does not replace and that could not be brought back before it came in
/// come back beside it.
void BringOwed(Session& session, const Standing& standing)
{
    if (!standing.owner || standing.owner->owed.empty() || !ProgramsInTrle(session).empty() ||
        BackupIsAway(session))
        return;
    OwnerRecord now = *standing.owner;
    LeftInTrle left;
    const auto came = std::erase_if(now.owed, [&](const std::string& name) {
        const auto relative = SafeRelative(name);
        if (!relative || !IsFile(session.BackupFolder() / *relative).ValueOr(true))
            return true; // nothing that could ever come
        if (!MayGiveWay(session, *standing.owner, name, left) ||
            !RestoreOriginal(session, *relative))
            return false;
        std::erase_if(now.added,
                      [&](const OwnedFile& file) { return EqualNames(file.name, name); });
        std::erase(now.overwritten, name);
        return true;
    });
    if (came > 0)
        (void)WriteOwner(session, std::move(now)); // otherwise they are looked for once more
    TellLeftovers(session, left);
}

} // namespace

bool ShouldGo(const Session& session, const OwnedFile& file)
{
    return Stays(session, file) && !StaysWithCompactBackup(session, file.name);
}

void ClearToldLeftovers(Session& session)
{
    const auto standing = LookAtStanding(session); // otherwise the next occasion may be able to
    if (standing && !IsOriginalButForLeftovers(session, *standing))
        BringOwed(session, *standing);
    if (!standing || !IsOriginalButForLeftovers(session, *standing) ||
        (standing->owner->overwritten.empty() && standing->owner->added.empty()) ||
        !ProgramsInTrle(session).empty() || BackupIsAway(session))
        return;
    const OwnerRecord& owner = *standing->owner;
    SwapJournal lists;
    lists.restore = owner.overwritten;
    lists.remove = owner.added;
    LeftInTrle left;
    DeleteBrought(session, owner.added, originalCode, left); // told already; only what is kept is
    const auto restored = RestoreMissing(session, lists, left); // new
    if (!left.kept.empty())
        session.host.Tell(Tone::Warning, GetMsg(Msg::FilesKept, {ShownNames(left.kept)}));
    if (!restored)
        return; // nothing is known of what waits; the next occasion tries again
    OwnerRecord now = owner;
    now.overwritten = std::move(left.overwritten);
    now.owed = now.overwritten;
    std::erase_if(now.added, [&](const OwnedFile& file) { return !Stays(session, file); });
    if (!IsOriginals(session, standing->level) &&
        std::none_of(now.added.begin(), now.added.end(),
                     [&](const OwnedFile& file) { return ShouldGo(session, file); }))
        (void)DeleteFile(
            session.MarkerPath()); // of a level that is gone; the next start tries again
    if (now.added.size() != owner.added.size() || now.overwritten != owner.overwritten ||
        !IsOriginals(session, standing->level))
        (void)WriteOwner(session, std::move(now)); // otherwise it is looked at once more
}

} // namespace kestrova
