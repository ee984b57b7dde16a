#include "swap/waiting_in_trle.h"

#include "core/look.h"
#include "core/name_list.h"
#include "history/standing.h"
#include "history/swap_journal_file.h"
#include "swap/backup_state.h"
#include "swap/homeless_state.h"
#include "swap/told_leftovers.h"
#include "words/restore.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// Savegames wait in a Level Editor's folder that is not where it was.
std::string WhatWaitsElsewhere(const Folders& folders)
{
    const auto isThere = IsFolder(folders.trle);
    const auto owner = ReadOwnerAsNoted(folders);
    if (!isThere || *isThere || !owner || !*owner || !(*owner)->owner ||
        *(*owner)->owner == originalCode || (*owner)->marker != absentMarker)
        return {};
    return GetMsg(Msg::WaitingStateAway,
                  {Readable((*owner)->home.path), Readable((*owner)->folder.path)});
}

} // namespace

std::string RemedyInTrle(const Folders& folders, const Archive& archive)
{
    const auto standing = LookAtStanding(folders, archive);
    if (!standing)
        return GetMsg(Msg::MendRoomRemedy);
    const auto homeless = FindHomeless(folders, *standing).ValueOr({});
    const bool homeIsAway = homeless && !homeless->live.empty() &&
                            !IsFolder(HomeOf(folders, homeless->level)).ValueOr(true);
    if (homeIsAway || !WhatWaitsElsewhere(folders).empty())
        return GetMsg(Msg::DoctorWaitsRemedy);
    if (BackupIsAway(folders))
        return GetMsg(Msg::MendBackupRemedy, {TextOf(folders.Backup())});
    return GetMsg(Msg::MendRoomRemedy);
}

std::vector<std::string> OwedOriginals(const Folders& folders)
{
    std::vector<std::string> owed;
    const auto owner = ReadOwner(folders);
    if (owner && *owner && (*owner)->owner && *(*owner)->owner != originalCode)
        for (const std::string& name : (*owner)->owed)
            owed.push_back(Readable(name));
    return owed;
}

std::string WhatWaitsInTrle(const Folders& folders, const Archive& archive,
                            const PreferencesRecord& preferences)
{
    const auto standing = LookAtStanding(folders, archive);
    if (!standing)
        return {}; // that it cannot be told is told elsewhere
    std::vector<std::string> words;
    if (const std::string elsewhere = WhatWaitsElsewhere(folders); !elsewhere.empty())
        words.push_back(elsewhere);
    const bool away = BackupIsAway(folders);
    const bool original = IsOriginalButForLeftovers(folders, *standing);
    if (!original && standing->owner && !standing->owner->owed.empty()) {
        std::vector<std::string> owed;
        for (const std::string& name : standing->owner->owed)
            owed.push_back(Readable(name));
        words.push_back(GetMsg(Msg::WaitingOriginals, {ShownNames(owed)}));
    }
    if (original) {
        std::vector<std::string> originals;
        for (const std::string& name : standing->owner->overwritten) {
            const auto relative = SafeRelative(name);
            if (relative && (away || IsFile(folders.Backup() / *relative).ValueOr(true)))
                originals.push_back(Readable(name));
        }
        std::vector<std::string> brought;
        for (const OwnedFile& file : standing->owner->added)
            if (ShouldGo(folders, preferences, file))
                brought.push_back(Readable(file.name));
        if (!originals.empty())
            words.push_back(GetMsg(Msg::WaitingOriginals, {ShownNames(originals)}));
        if (!brought.empty())
            words.push_back(GetMsg(Msg::WaitingBrought, {ShownNames(brought)}));
    }
    const auto homeless = FindHomeless(folders, *standing).ValueOr({});
    if (homeless && !homeless->live.empty()) {
        const Path home = HomeOf(folders, homeless->level);
        const bool gone = !IsFolder(home).ValueOr(true);
        words.push_back(GetMsg(gone ? Msg::WaitingStateGone : Msg::WaitingState,
                               {TextOf(home), ShownNames(ShownNamesOf(homeless->live))}));
    }
    return Join(words, "; ");
}

} // namespace kestrova
