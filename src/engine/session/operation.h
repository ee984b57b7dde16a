#pragma once

#include "platform/folder_memory.h"
#include "session/session.h"

namespace kestrova
{

/// Counts an operation for the length of its life; folders are listed once meanwhile.
class Operation
{
public:
    explicit Operation(RunningOperations& running) : running_(running) { ++running_.count; }
    explicit Operation(Session& session) : Operation(session.runningOperations) {}
    ~Operation()
    {
        if (--running_.count == 0)
            running_.agreedToProgramsInTrle = false;
    }
    Operation(const Operation&) = delete;
    Operation& operator=(const Operation&) = delete;

private:
    RunningOperations& running_;
    platform::FolderMemory folders_;
};

} // namespace kestrova
