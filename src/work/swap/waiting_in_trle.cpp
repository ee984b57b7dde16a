#include "swap/waiting_in_trle.h"

#include "core/look.h"
#include "core/name_list.h"
#include "history/standing.h"
#include "history/swap_journal_file.h"
#include "swap/backup.h"
#include "swap/homeless_state.h"
#include "swap/told_leftovers.h"
#include "words/restore.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// Savegames wait in a Level Editor's folder that is not where it was.
std::string WhatWaitsElsewhere(const Session& session)
{
    const auto isThere = IsFolder(session.TrleFolder());
    const auto owner = ReadOwnerAsNoted(session);
    if (!isThere || *isThere || !owner || !*owner || !(*owner)->owner ||
        *(*owner)->owner == originalCode || (*owner)->marker != absentMarker)
        return {};
    return GetMsg(Msg::WaitingStateAway,
                  {Readable((*owner)->home.path), Readable((*owner)->folder.path)});
}

} // namespace

std::string RemedyInTrle(const Session& session)
{
    const auto standing = LookAtStanding(session);
    if (!standing)
        return GetMsg(Msg::MendRoomRemedy);
    const auto homeless = FindHomeless(session, *standing).ValueOr({});
    const bool homeIsAway = homeless && !homeless->live.empty() &&
                            !IsFolder(HomeOf(session, homeless->level)).ValueOr(true);
    if (homeIsAway || !WhatWaitsElsewhere(session).empty())
        return GetMsg(Msg::DoctorWaitsRemedy);
    if (BackupIsAway(session))
        return GetMsg(Msg::MendBackupRemedy, {TextOf(session.BackupFolder())});
    return GetMsg(Msg::MendRoomRemedy);
}

std::vector<std::string> OwedOriginals(const Session& session)
{
    std::vector<std::string> owed;
    const auto owner = ReadOwner(session);
    if (owner && *owner && (*owner)->owner && *(*owner)->owner != originalCode)
        for (const std::string& name : (*owner)->owed)
            owed.push_back(Readable(name));
    return owed;
}

std::string WhatWaitsInTrle(const Session& session)
{
    const auto standing = LookAtStanding(session);
    if (!standing)
        return {}; // that it cannot be told is told elsewhere
    std::vector<std::string> words;
    if (const std::string elsewhere = WhatWaitsElsewhere(session); !elsewhere.empty())
        words.push_back(elsewhere);
    const bool away = BackupIsAway(session);
    const bool original = IsOriginalButForLeftovers(session, *standing);
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
            if (relative && (away || IsFile(session.BackupFolder() / *relative).ValueOr(true)))
                originals.push_back(Readable(name));
        }
        std::vector<std::string> brought;
        for (const OwnedFile& file : standing->owner->added)
            if (ShouldGo(session, file))
                brought.push_back(Readable(file.name));
        if (!originals.empty())
            words.push_back(GetMsg(Msg::WaitingOriginals, {ShownNames(originals)}));
        if (!brought.empty())
            words.push_back(GetMsg(Msg::WaitingBrought, {ShownNames(brought)}));
    }
    const auto homeless = FindHomeless(session, *standing).ValueOr({});
    if (homeless && !homeless->live.empty()) {
        const Path home = HomeOf(session, homeless->level);
        const bool gone = !IsFolder(home).ValueOr(true);
        words.push_back(GetMsg(gone ? Msg::WaitingStateGone : Msg::WaitingState,
                               {TextOf(home), ShownNames(ShownNamesOf(homeless->live))}));
    }
    return Join(words, "; ");
}

} // namespace kestrova
