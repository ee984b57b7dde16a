#pragma once

#include "intake/add_queue.h"

/// What a queue's items and its end are called.
namespace kestrova
{

/// `Added`, `Skipped` …; `ended`: nothing waits any more.
std::string StateText(QueueState state, bool ended);
/// What became of an item: the level that it is now, or why it is none; empty while it waits.
std::string OutcomeText(const QueueItem& item);
/// `9 added, 2 skipped, …`, with what was not tried when there is such.
std::string CountsText(const AddQueue& queue);
/// Why the queue ended before its last source; empty when it did not.
std::string EndText(QueueEnd end);
/// All of it, a line for each source, to be copied.
std::string QueueText(const AddQueue& queue);

} // namespace kestrova
