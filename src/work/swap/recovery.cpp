#include "swap/recovery.h"

#include "archive/level_folders.h"
#include "core/copying.h"
#include "core/look.h"
#include "core/removal.h"
#include "history/changes.h"
#include "history/history.h"
#include "history/swap_journal_file.h"
#include "originals/backup_folders.h"
#include "originals/folder_loan.h"
#include "originals/import_return.h"
#include "session/operation.h"
#include "session/telling.h"
#include "swap/folder_guard.h"
#include "swap/homeless_state.h"
#include "swap/lent_folder.h"
#include "swap/live_state.h"
#include "swap/restore_steps.h"
#include "swap/return_to_original.h"
#include "swap/told_leftovers.h"
#include "swap/unfinished_import.h"
#include "swap/unfinished_move.h"
#include "swap/waiting_in_trle.h"
#include "words/moving.h"
#include "words/originals.h"
#include "words/restore.h"
#include "words/wads.h"

#include <algorithm>

namespace kestrova
{

namespace
{

bool Unfinished(Host& host, const Failure& failure)
{
    TellFailure(host, GetMsg(Msg::InterruptedFailed), failure);
    return false;
}

void TellLacking(Host& host, const LackingFolder& lacking)
{
    const Message text =
        lacking.place == Place::LevelEditor
            ? (lacking.anotherIsThere ? Msg::InterruptedFolderOther : Msg::InterruptedFolderGone)
            : (lacking.anotherIsThere ? Msg::InterruptedStoreOther : Msg::InterruptedStoreGone);
    host.Tell(Tone::Error, GetMsg(text, {TextOf(lacking.noted)}));
}

/// What a swap took out of a store comes back there, as far as nothing newer stands in its place.
Status RefillStore(const Folders& folders, const SwapJournal& journal)
{
    const Path store = ResolvePath(NeededStore(folders, journal));
    const auto isThere = IsFolder(store);
    if (!isThere)
        return isThere.Error();
    if (journal.phase != SwapPhase::Planned || !*isThere)
        return {};
    for (const StateFile& file : journal.store) {
        if (!SafeName(file.name))
            continue;
        const Path content = HistoryContent(folders, file.hash);
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
bool GiveUpFolder(Host& host, const Folders& folders, const SwapJournal& journal)
{
    auto status = RefillStore(folders, journal);
    if (status)
        status = DropJournal(folders);
    if (!status)
        return Unfinished(host, status.Error());
    host.Tell(Tone::Warning, GetMsg(Msg::LetGoFolder, {Readable(journal.folder.path)}));
    return true;
}

bool MendSwap(const SwapParts& parts, const Folders& folders, const SwapJournal& journal)
{
    if (journal.phase == SwapPhase::Restore) {
        RestoreReport report;
        const auto status = FinishRestore(parts, folders, journal, report);
        TellKept(parts.host, report);
        TellIncompleteRestore(parts.host, report);
        if (!status) {
            TellFailure(parts.host, GetMsg(Msg::RestoreNotFinished), status.Error());
            return false;
        }
        if (report.Whole())
            parts.host.Tell(Tone::Warning, GetMsg(Msg::InterruptedRestore));
        return true;
    }
    if (journal.phase == SwapPhase::Planned) {
        auto status = PutStoreBack(parts.machine, folders, parts.settings,
                                   LevelOfNeededStore(folders, journal),
                                   NeededStore(folders, journal), journal.store);
        if (status)
            status = DropJournal(folders);
        if (!status)
            return Unfinished(parts.host, status.Error());
        ClearHalfDone(folders);
        parts.host.Tell(Tone::Warning, GetMsg(Msg::InterruptedBefore));
        return true;
    }
    LeftInTrle left;
    if (const auto status = ReturnToOriginal(parts, folders, journal, left); !status)
        return Unfinished(parts.host, status.Error());
    const bool whole = left.overwritten.empty();
    parts.host.Tell(whole ? Tone::Warning : Tone::Error,
                    GetMsg(whole ? Msg::InterruptedSwap : Msg::InterruptedNotWhole));
    TellLeftovers(parts.host, folders, left);
    return true;
}

/// A journal that nobody can read must not stop the program for ever, nor be lost.
bool SetAsideDamaged(Host& host, const Folders& folders)
{
    const auto aside = RenameAside(JournalPath(folders));
    if (!aside)
        return Unfinished(host, aside.Error());
    host.Tell(Tone::Error, GetMsg(Msg::InterruptedDamaged, {TextOf(*aside)}));
    return true;
}

/// A change of savegames is finished before a swap moves them.
bool FinishSavegames(const SwapParts& parts, Archive& archive)
{
    if (!ChangeWaits(parts.folders))
        return true;
    const Operation running{parts};
    const bool savegames = SavegameMoveWaitsIn(parts.folders);
    if (const auto status = FinishChange(parts.machine, parts.folders, archive, parts.settings);
        !status) {
        if (status.Error().code == ErrorCode::Damaged) {
            parts.host.Tell(Tone::Error, GetMsg(Msg::ChangeNoteDamaged, {status.Error().subject}));
            return true;
        }
        TellFailure(parts.host,
                    GetMsg(savegames ? Msg::SavegamesUnfinished : Msg::ChangeUnfinished),
                    status.Error());
        return false;
    }
    parts.host.Tell(Tone::Warning,
                    GetMsg(savegames ? Msg::SavegamesFinished : Msg::ChangeFinished));
    return true;
}

} // namespace

bool RecoverInterruptedWork(Session& session, const Whereabouts& said)
{
    if (!EndUnfinishedMove(session, said) ||
        !DoneOrTold(session.host, SettleBackupFolders(session.Folders())) ||
        !BringLentFolderBack(session, said) || !TakeImportBack(session, said) ||
        !FinishSavegames(session, session.archive))
        return false;
    const auto found = ReadJournal(session.Folders());
    if (!found)
        return found.Error().code == ErrorCode::Damaged
                   ? SetAsideDamaged(session.host, session.Folders())
                   : Unfinished(session.host, found.Error());
    if (!*found) {
        if (!FollowMovedState(session, said))
            return false;
        // What stays, a swap or the next start tries again.
        (void)ReturnHomelessState(session, session.Folders(), said);
        ClearToldLeftovers(session);
        return true;
    }
    SwapJournal journal = **found;
    const Operation running{session};
    if (!FollowMovedFolders(session, journal, said))
        return false;
    const auto lacking = LackingOf(session.Folders(), journal);
    if (!lacking)
        return Unfinished(session.host, lacking.Error());
    if (*lacking) {
        if (said.letGo && (*lacking)->place == Place::LevelEditor)
            return GiveUpFolder(session.host, session.Folders(), journal);
        TellLacking(session.host, **lacking);
        return false;
    }
    // The preferences may name another folder by now; the work is mended where it began.
    Folders folders = session.Folders();
    folders.trle = FolderFromText(journal.folder.path);
    return MayChangeTrle(session, folders) && MendSwap(session, folders, journal);
}

std::string RemedyForWaiting(const Folders& folders, const Archive& archive)
{
    if (WhatMendingLacks(folders, archive).ValueOr({}))
        return GetMsg(Msg::DoctorWaitsRemedy);
    if (MoveWaits(folders))
        return GetMsg(Msg::MoveRemedy);
    if (!IsFree(JournalPath(folders)).ValueOr(false))
        return GetMsg(Msg::MendRoomRemedy);
    return RemedyInTrle(folders, archive);
}

std::string InterruptedWork(const Folders& folders, const Archive& archive)
{
    if (const auto lacking = WhatMendingLacks(folders, archive); lacking && *lacking)
        return GetMsg((*lacking)->place == Place::LevelEditor ? Msg::WaitingSwapFolder
                                                              : Msg::WaitingSwapStore,
                      {TextOf((*lacking)->noted)});
    if (MoveWaits(folders))
        return GetMsg(Msg::WaitingMove);
    if (!IsFree(JournalPath(folders)).ValueOr(false)) // nor is one that cannot be looked at none
        return GetMsg(Msg::WaitingSwap);
    if (LoanWaits(folders))
        return GetMsg(Msg::WaitingLoan);
    if (ImportWaits(folders))
        return GetMsg(Msg::WaitingImport);
    if (ChangeWaits(folders))
        return GetMsg(SavegameMoveWaitsIn(folders) ? Msg::WaitingSavegames : Msg::WaitingChange);
    return BackupFoldersWait(folders) ? GetMsg(Msg::WaitingBackup) : std::string{};
}

} // namespace kestrova
