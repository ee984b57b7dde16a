#pragma once

#include "core/files.h"
#include "platform/file_lock.h"

namespace kestrova
{

/// Who holds it may look and change what is noted of discs that are seen. It is one lock for all of
/// them, in a file that stays.
class SeenLock
{
public:
    /// `heartbeat`: called while another process holds it; False stops.
    static Result<SeenLock> Take(const Path& programFolder, const Heartbeat& heartbeat);

private:
    platform::FileLock lock_;
};

/// This process uses what is seen there.
Status MarkUser(const Path& folder);
/// It does not any more; names of processes that have ended go as well. True when another one that
/// runs uses it.
bool UnmarkUser(const Path& folder);
/// True when a process beside this one uses it.
bool OthersUse(const Path& folder);

} // namespace kestrova
