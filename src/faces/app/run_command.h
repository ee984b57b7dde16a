#pragma once

#include "app/command.h"

/// How a row becomes work: what it needs, the locks, the count of operations, and the end.
namespace kestrova
{

/// What is wrong with the words, before anything is opened; empty when nothing is. `first`: the row
/// of the command's word.
std::string WrongWords(const CommandRow& first, Run& run);

/// A command of the terminal whose words are right: opens what the row needs, with the locks of
/// what it touches, runs it as one operation, and writes preferences. Tells why not.
bool RunFromWords(const CommandRow& row, Run& run);

/// A command of a window, whose session stands open, on the level that the list has chosen. Refused
/// while an operation runs.
bool RunOnChosen(const CommandRow& row, Session& session, Face& face);

} // namespace kestrova
