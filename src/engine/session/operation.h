#pragma once

#include "platform/folder_memory.h"
#include "session/session.h"

namespace kestrova
{

/// Counts an operation for the length of its life; folders are listed once meanwhile.
class Operation
{
public:
    explicit Operation(Session& session) : session_(session) { ++session_.runningOperations; }
    ~Operation()
    {
        if (--session_.runningOperations == 0)
            session_.agreedToProgramsInTrle = false;
    }
    Operation(const Operation&) = delete;
    Operation& operator=(const Operation&) = delete;

private:
    Session& session_;
    platform::FolderMemory folders_;
};

} // namespace kestrova
