#pragma once

#include "archive/archive_parts.h"
#include "session/session.h"

namespace kestrova
{

/// What noting and making a change of what a level has needs. A session, and what changes the list,
/// become it by themselves.
struct ChangeParts {
    ChangeParts(Machine& theMachine, const Folders& theFolders, const Archive& theArchive,
                const ProgramSettings& theSettings)
        : machine(theMachine), archive(theArchive), settings(theSettings), folders(theFolders)
    {
    }
    ChangeParts(Session& session)
        : ChangeParts(session.machine, session.Folders(), session.archive, session.settings)
    {
    }
    ChangeParts(const ArchiveParts& parts)
        : ChangeParts(parts.machine, parts.folders, parts.archive, parts.settings)
    {
    }

    Machine& machine;
    const Archive& archive;          ///< the list that the level is of
    const ProgramSettings& settings; ///< how much is kept for the way back
    Folders folders;
};

} // namespace kestrova
