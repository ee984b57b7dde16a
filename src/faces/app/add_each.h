#pragma once

#include "app/command.h"
#include "intake/add_queue.h"

namespace kestrova
{

/// Each source of the words as a level of its own; a line as each one's turn ends, and all of them
/// as the result. True when every one is in the archive at the end.
bool AddEach(Run& run, const AddQueue::Prepare& prepare);

} // namespace kestrova
