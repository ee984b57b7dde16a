#pragma once

#include "formats/loan_note.h"
#include "session/folders.h"
#include "session/machine.h"

/// How a lent Level Editor's folder comes back, by its note alone: in the run that lent it, and at
/// the next start when that one was killed.
namespace kestrova
{

Path LoanNotePath(const Folders& folders);
/// No value when nothing is lent; `Damaged` for a note that nobody can read.
Result<std::optional<LoanNote>> ReadLoanNote(const Folders& folders);
Status WriteLoanNote(const Folders& folders, const LoanNote& note);
/// Where what stood at a place lies while it is lent.
Path AsideOf(const Folders& folders, std::size_t place);

/// Exactly that name gets the file, whatever other spellings stand beside it.
Status MoveSpelled(const Path& from, const Path& to);

/// How much comes back.
enum class LoanEnd {
    Whole,     ///< all places, by the run that knows what stands there
    OfProgram, ///< the same, where nobody but a program was at work
    Recovered, ///< all places, where somebody else may have been at work meanwhile
    Cancelled, ///< all but the copies at the places that `stays` names
};

/// Takes away what stands at the places, puts back what stood there, or else what the backup has,
/// and drops the note once all of it is on the disk. What stands there and is not what was put
/// there goes to the vault first; so does, of a killed run, what a program made. Goes on past a
/// place that fails; the first failure is the answer, and the note stays for the next attempt.
/// `stays`: places whose copy a cancel leaves, unless somebody's own file stood there.
Status ReturnLoan(Machine& machine, const Folders& folders, const LoanNote& note, LoanEnd end,
                  const std::vector<std::size_t>& stays = {});

/// What was made stays; what stood there is no longer wanted, and its keeper sees to it.
Status KeepLoan(const Folders& folders, LoanNote note);

} // namespace kestrova
