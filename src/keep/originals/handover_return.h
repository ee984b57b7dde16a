#pragma once

#include "originals/loan_return.h"

#include <set>

/// How a folder that was handed over whole comes back, by its note alone.
namespace kestrova
{

/// Where the copy of a file lies meanwhile; `file`: its number in the note.
Path KeptCopyOf(const Folders& folders, std::size_t file);

/// Deletes what came, brings back what went or changed, and drops the note once all of it is on the
/// disk. In a run that was killed what came or changed goes to the vault first. Goes on past what
/// fails; the first failure is the answer, and the note stays for the next attempt. `stays`: new
/// files that stay.
Status ReturnHandover(Machine& machine, const Folders& folders, const LoanNote& note, LoanEnd end,
                      const std::set<Path>& stays = {});

} // namespace kestrova
