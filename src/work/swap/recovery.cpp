#include "swap/recovery.h"

#include "archive/level_folders.h"
#include "core/copying.h"
#include "core/look.h"
#include "core/name_list.h"
#include "core/removal.h"
#include "core/staged_file.h"
#include "history/history.h"
#include "history/state_change.h"
#include "history/swap_journal_file.h"
#include "originals/backup_folders.h"
#include "originals/vault.h"
#include "swap/folder_guard.h"
#include "swap/homeless_state.h"
#include "swap/owned_files.h"
#include "swap/restore_steps.h"
#include "swap/return_to_original.h"
#include "swap/state_files.h"
#include "swap/swap_run.h"
#include "swap/told_leftovers.h"
#include "swap/waiting_in_trle.h"
#include "words/originals.h"
#include "words/restore.h"

#include <algorithm>

namespace kestrova
{

namespace
{

bool Unfinished(Session& session, const Failure& failure)
{
    TellFailure(session, GetMsg(Msg::InterruptedFailed), failure);
    return false;
}

void TellLacking(Session& session, const LackingFolder& lacking)
{
    const Message text =
        lacking.place == Place::LevelEditor
            ? (lacking.anotherIsThere ? Msg::InterruptedFolderOther : Msg::InterruptedFolderGone)
            : (lacking.anotherIsThere ? Msg::InterruptedStoreOther : Msg::InterruptedStoreGone);
    session.host.Tell(Tone::Error, GetMsg(text, {TextOf(lacking.noted)}));
}

/// What a swap took out of a store comes back there, as far as nothing newer stands in its place.
Status RefillStore(const Session& session, const SwapJournal& journal)
{
    const Path store = ResolvePath(NeededStore(session, journal));
    const auto isThere = IsFolder(store);
    if (!isThere)
        return isThere.Error();
    if (journal.phase != SwapPhase::Planned || !*isThere)
        return {};
    for (const StateFile& file : journal.store) {
        if (!SafeName(file.name))
            continue;
        const Path content = HistoryContent(session, file.hash);
        const auto isKept = IsFile(content);
        const auto isFree = IsFree(store / file.name);
        if (!isKept || !isFree)
            return isKept ? isFree.Error() : isKept.Error();
        if (!*isKept || !*isFree)
            continue;
        if (auto status =
                CopyFileOver(content, store / file.name, {Verify::Content, true, true, {}});
            !status)
            return status;
    }
    return {};
}

/// The Level Editor's folder is gone for good.
bool GiveUpFolder(Session& session, const SwapJournal& journal)
{
    auto status = RefillStore(session, journal);
    if (status)
        status = DropJournal(session);
    if (!status)
        return Unfinished(session, status.Error());
    session.host.Tell(Tone::Warning, GetMsg(Msg::LetGoFolder, {Readable(journal.folder.path)}));
    return true;
}

bool MendSwap(Session& session, const SwapJournal& journal)
{
    if (journal.phase == SwapPhase::Restore) {
        RestoreReport report;
        const auto status = FinishRestore(session, journal, report);
        TellKept(session, report);
        TellIncompleteRestore(session, report);
        if (!status) {
            TellFailure(session, GetMsg(Msg::RestoreNotFinished), status.Error());
            return false;
        }
        if (report.Whole())
            session.host.Tell(Tone::Warning, GetMsg(Msg::InterruptedRestore));
        return true;
    }
    if (journal.phase == SwapPhase::Planned) {
        auto status = PutStoreBack(session, LevelOfNeededStore(session, journal),
                                   NeededStore(session, journal), journal.store);
        if (status)
            status = DropJournal(session);
        if (!status)
            return Unfinished(session, status.Error());
        ClearHalfDone(session);
        session.host.Tell(Tone::Warning, GetMsg(Msg::InterruptedBefore));
        return true;
    }
    LeftInTrle left;
    if (const auto status = ReturnToOriginal(session, journal, left); !status)
        return Unfinished(session, status.Error());
    const bool whole = left.overwritten.empty();
    session.host.Tell(whole ? Tone::Warning : Tone::Error,
                      GetMsg(whole ? Msg::InterruptedSwap : Msg::InterruptedNotWhole));
    TellLeftovers(session, left);
    return true;
}

/// A journal that nobody can read must not stop the program for ever, nor be lost.
bool SetAsideDamaged(Session& session)
{
    const Path file = JournalPath(session);
    const auto aside = FreeNumbered(file);
    if (!aside)
        return Unfinished(session, aside.Error());
    if (const auto failure = platform::Rename(file, *aside))
        return Unfinished(session, MakeFailure(ErrorCode::CannotWrite, TextOf(file), failure));
    session.host.Tell(Tone::Error, GetMsg(Msg::InterruptedDamaged, {TextOf(*aside)}));
    return true;
}

/// A change of savegames is finished before a swap moves them.
bool FinishSavegames(Session& session)
{
    if (!StateChangeWaits(session))
        return true;
    const Operation running{session};
    if (const auto status = FinishStateChange(session); !status) {
        TellFailure(session, GetMsg(Msg::SavegamesUnfinished), status.Error());
        return false;
    }
    session.host.Tell(Tone::Warning, GetMsg(Msg::SavegamesFinished));
    return true;
}

} // namespace

bool RecoverInterruptedWork(Session& session, const Whereabouts& said)
{
    if (!SettleBackupFolders(session) || !FinishSavegames(session))
        return false;
    const auto found = ReadJournal(session);
    if (!found)
        return found.Error().code == ErrorCode::Damaged ? SetAsideDamaged(session)
                                                        : Unfinished(session, found.Error());
    if (!*found) {
        if (!FollowMovedState(session, said))
            return false;
        std::vector<std::string> stay;
        (void)ReturnHomelessState(session, stay, said); // a swap, or the next start, tries again
        ClearToldLeftovers(session);
        return true;
    }
    SwapJournal journal = **found;
    const Operation running{session};
    if (!FollowMovedFolders(session, journal, said))
        return false;
    const auto lacking = LackingOf(session, journal);
    if (!lacking)
        return Unfinished(session, lacking.Error());
    if (*lacking) {
        if (said.letGo && (*lacking)->place == Place::LevelEditor)
            return GiveUpFolder(session, journal);
        TellLacking(session, **lacking);
        return false;
    }
    // The preferences may name another folder by now; the work is mended where it began.
    std::string chosen = journal.folder.path;
    std::swap(chosen, session.preferences.trlePath);
    const bool mended = MayChangeTrle(session) && MendSwap(session, journal);
    std::swap(chosen, session.preferences.trlePath);
    return mended;
}

std::string RemedyForWaiting(const Session& session)
{
    if (WhatMendingLacks(session).ValueOr({}))
        return GetMsg(Msg::DoctorWaitsRemedy);
    if (!IsFree(JournalPath(session)).ValueOr(false))
        return GetMsg(Msg::MendRoomRemedy);
    return RemedyInTrle(session);
}

std::string InterruptedWork(const Session& session)
{
    if (const auto lacking = WhatMendingLacks(session); lacking && *lacking)
        return GetMsg((*lacking)->place == Place::LevelEditor ? Msg::WaitingSwapFolder
                                                              : Msg::WaitingSwapStore,
                      {TextOf((*lacking)->noted)});
    if (!IsFree(JournalPath(session)).ValueOr(false)) // nor is one that cannot be looked at none
        return GetMsg(Msg::WaitingSwap);
    if (StateChangeWaits(session))
        return GetMsg(Msg::WaitingSavegames);
    return BackupFoldersWait(session) ? GetMsg(Msg::WaitingBackup) : std::string{};
}

} // namespace kestrova
