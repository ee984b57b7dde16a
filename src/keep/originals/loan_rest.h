#pragma once

#include "originals/loan_return.h"
#include "session/host.h"

/// What stands in a lent folder beside the lent places, while an outside program works there: it
/// comes back too, whatever the program did to it.
namespace kestrova
{

/// Notes in `note.rest` what stands there, and keeps aside, flushed, what the backup lacks: copies
/// up to a bound, and of what is larger second names, which a program that deletes cannot reach.
/// `results`: names in which, and below which, the program may write; what it deletes there, and a
/// text that it changes, comes back all the same. The note itself is not written.
Status KeepRest(Machine& machine, const Folders& folders, LoanNote& note,
                const std::vector<std::string>& results, ProgressScope& progress);

/// What became of the rest, by names.
struct RestReturn {
    std::vector<Path> back;    ///< had been changed or deleted, and are as they were
    std::vector<Path> gone;    ///< had come beside the places; the vault has them
    std::vector<Path> changed; ///< too large to be copied first, and written to: stay as they are
};
/// Brings the rest back by the note, which is neither changed nor dropped. What had changed or come
/// goes to the vault first. A player's files are brought back only when they are gone: the game may
/// be running.
Result<RestReturn> ReturnRest(Machine& machine, const Folders& folders, const LoanNote& note);
/// What was kept aside is no longer wanted.
void DropRest(const Folders& folders);

} // namespace kestrova
