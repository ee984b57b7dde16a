#pragma once

#include "platform/process.h"

/// Programs that were started by another one, known by a variable that they inherit: a child that
/// begins a session of its own leaves its process group, and keeps its environment.
namespace kestrova::platform
{

/// A value for the variable that no other run has.
std::string FreshRunMark();
/// The processes of this user that have the variable with that value.
std::vector<RunningProgram> ProcessesMarked(const std::string& variable, const std::string& value);
/// Ends a process at once.
void EndProcess(std::int64_t pid);

} // namespace kestrova::platform
