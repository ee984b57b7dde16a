#pragma once

#include "platform/folder_memory.h"
#include "platform/steady_folders.h"
#include "session/session.h"

namespace kestrova
{

/// Counts an operation for the length of its life. Folders are listed once meanwhile, and nothing
/// is made where another disk, or none, has come in the place of those that it works in.
class Operation
{
public:
    Operation(Running& running, const Folders& folders, FolderLocks& locks)
        : running_(running), steady_({folders.program, folders.trle, folders.levels}, locks.Lost())
    {
        ++running_.operations;
    }
    explicit Operation(Session& session)
        : Operation(session.running, session.Folders(), session.locks)
    {
    }
    /// Of a session's parts.
    template <class Parts>
    explicit Operation(const Parts& parts) : Operation(parts.running, parts.folders, parts.locks)
    {
    }
    ~Operation()
    {
        if (--running_.operations == 0)
            running_.agreedToProgramsInTrle = false;
    }
    Operation(const Operation&) = delete;
    Operation& operator=(const Operation&) = delete;

private:
    Running& running_;
    platform::FolderMemory memory_;
    platform::SteadyFolders steady_;
};

} // namespace kestrova
