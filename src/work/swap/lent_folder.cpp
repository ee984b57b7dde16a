#include "swap/lent_folder.h"

#include "core/name_list.h"
#include "core/removal.h"
#include "core/text.h"
#include "history/swap_journal_file.h"
#include "history/work_note.h"
#include "originals/loan_return.h"
#include "originals/vault.h"
#include "session/operation.h"
#include "session/telling.h"
#include "swap/folder_guard.h"
#include "tools/bounded_run.h"
#include "words/restore.h"
#include "words/session.h"

#include <algorithm>

namespace kestrova
{

namespace
{

bool LoanUnfinished(Host& host, const Failure& failure)
{
    TellFailure(host, GetMsg(Msg::LoanNotReturned), failure);
    return false;
}

bool GiveUpLent(Host& host, const Folders& folders, const LoanNote& note, const Whereabouts& said)
{
    if (!said.letGo) {
        host.Tell(Tone::Error, GetMsg(Msg::LoanFolderGone, {Readable(note.folder.path)}));
        return true;
    }
    const auto dropped = DropWorkNote(LoanNotePath(folders));
    if (!dropped)
        return LoanUnfinished(host, dropped.Error());
    host.Tell(Tone::Warning, GetMsg(Msg::LoanLetGo, {Readable(note.folder.path)}));
    return true;
}

/// Of the vault, oldest first; none while it cannot be read.
std::vector<std::string> NamesKept(const Folders& folders)
{
    std::vector<std::string> names;
    for (const KeptFile& file : KeptFiles(folders).ValueOr({}))
        names.push_back(Readable(file.file));
    return names;
}

bool BringBackIn(const SwapParts& parts, const Path& folder, const LoanNote& note)
{
    Folders folders = parts.folders;
    folders.trle = folder;
    EndForgottenWork(parts.host, parts.sounds.tools);
    if (!MayChangeTrle(parts, folders))
        return false;
    const std::size_t before = NamesKept(folders).size();
    if (const auto status = ReturnLoan(parts.machine, folders, note, LoanEnd::Recovered); !status)
        return LoanUnfinished(parts.host, status.Error());
    parts.host.Tell(Tone::Warning, GetMsg(Msg::LoanReturned));
    std::vector<std::string> names = NamesKept(folders);
    names.erase(names.begin(),
                names.begin() + static_cast<std::ptrdiff_t>(std::min(before, names.size())));
    if (!names.empty())
        parts.host.Tell(Tone::Warning, GetMsg(Msg::LoanKeptMeanwhile, {ShownNames(names)}));
    return true;
}

} // namespace

Path FindMarked(const Path& trle, const FolderMark& mark, const Whereabouts& said)
{
    for (const Path& folder : {FolderFromText(mark.path), trle, said.trle})
        if (!folder.empty() && HasMark(folder, mark).ValueOr(false))
            return folder;
    return {};
}

bool HoldMarked(Host& host, FolderLocks& locks, const Path& folder)
{
    const auto held = locks.Hold(folder);
    if (!held)
        TellFailure(host, GetMsg(Msg::FolderNotLocked, {TextOf(folder)}), held.Error());
    return static_cast<bool>(held);
}

void EndForgottenWork(Host& host, const Tools& tools)
{
    const auto ended = EndForgottenRuns(tools);
    if (!ended.empty())
        host.Tell(Tone::Warning, GetMsg(Msg::ForgottenEnded, {Join(ended, ", ")}));
}

bool BringLentFolderBack(const SwapParts& parts, const Whereabouts& said)
{
    const auto note = ReadLoanNote(parts.folders);
    if (!note && note.Error().code == ErrorCode::Damaged) {
        const auto aside = RenameAside(LoanNotePath(parts.folders));
        if (!aside)
            return LoanUnfinished(parts.host, aside.Error());
        parts.host.Tell(Tone::Error, GetMsg(Msg::LoanNoteDamaged, {TextOf(*aside)}));
        return true;
    }
    if (!note)
        return LoanUnfinished(parts.host, note.Error());
    if (!*note)
        return true;
    const Operation running{parts};
    const Path folder = FindMarked(parts.folders.trle, (*note)->folder, said);
    if (folder.empty())
        return GiveUpLent(parts.host, parts.folders, **note, said);
    if (!HoldMarked(parts.host, parts.locks, folder))
        return false;
    const bool isBack = BringBackIn(parts, folder, **note);
    if (folder != parts.folders.trle)
        parts.locks.Release(folder);
    return isBack;
}

} // namespace kestrova
