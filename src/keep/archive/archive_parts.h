#pragma once

#include "session/session.h"

namespace kestrova
{

/// What changing and saving the list of levels needs of a session, which becomes it by itself.
struct ArchiveParts {
    ArchiveParts(Session& session)
        : host(session.host), machine(session.machine), list(session.list),
          archive(session.archive), preferences(session.preferences), settings(session.settings),
          folders(session.Folders())
    {
    }

    Host& host;
    Machine& machine;
    LevelList& list; ///< as it is shown
    Archive& archive;
    PreferencesRecord& preferences; ///< the archive's file, and whether each change is saved
    ProgramSettings& settings;      ///< exact forms of its folders
    Folders folders;
};

} // namespace kestrova
