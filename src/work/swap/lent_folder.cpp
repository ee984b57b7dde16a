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

bool BringBackIn(Session& session, const Path& folder, const LoanNote& note)
{
    Folders folders = session.Folders();
    folders.trle = folder;
    EndForgottenWork(session);
    if (!MayChangeTrle(session, folders))
        return false;
    const std::size_t before = NamesKept(folders).size();
    if (const auto status = ReturnLoan(session.machine, folders, note, LoanEnd::Recovered); !status)
        return LoanUnfinished(session.host, status.Error());
    session.host.Tell(Tone::Warning, GetMsg(Msg::LoanReturned));
    std::vector<std::string> names = NamesKept(folders);
    names.erase(names.begin(),
                names.begin() + static_cast<std::ptrdiff_t>(std::min(before, names.size())));
    if (!names.empty())
        session.host.Tell(Tone::Warning, GetMsg(Msg::LoanKeptMeanwhile, {ShownNames(names)}));
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

void EndForgottenWork(Session& session)
{
    const auto ended = EndForgottenRuns(ToolsOf(session));
    if (!ended.empty())
        session.host.Tell(Tone::Warning, GetMsg(Msg::ForgottenEnded, {Join(ended, ", ")}));
}

bool BringLentFolderBack(Session& session, const Whereabouts& said)
{
    const auto note = ReadLoanNote(session.Folders());
    if (!note && note.Error().code == ErrorCode::Damaged) {
        const auto aside = RenameAside(LoanNotePath(session.Folders()));
        if (!aside)
            return LoanUnfinished(session.host, aside.Error());
        session.host.Tell(Tone::Error, GetMsg(Msg::LoanNoteDamaged, {TextOf(*aside)}));
        return true;
    }
    if (!note)
        return LoanUnfinished(session.host, note.Error());
    if (!*note)
        return true;
    const Operation running{session};
    const Path folder = FindMarked(session.TrleFolder(), (*note)->folder, said);
    if (folder.empty())
        return GiveUpLent(session.host, session.Folders(), **note, said);
    if (!HoldMarked(session.host, session.locks, folder))
        return false;
    const bool isBack = BringBackIn(session, folder, **note);
    if (folder != session.TrleFolder())
        session.locks.Release(folder);
    return isBack;
}

} // namespace kestrova
