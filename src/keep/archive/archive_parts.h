#pragma once

#include "session/session.h"

namespace kestrova
{

/// What work on the loaded archive and its levels needs of a session, which becomes it by itself.
/// The folders are those of its beginning: whoever moves them takes the session.
struct ArchiveParts {
    ArchiveParts(Session& session)
        : host(session.host), machine(session.machine), list(session.list),
          running(session.running), locks(session.locks), archive(session.archive),
          preferences(session.preferences), settings(session.settings), folders(session.Folders())
    {
    }

    Host& host;
    Machine& machine;
    LevelList& list; ///< as it is shown
    Running& running;
    FolderLocks& locks; ///< its folder is held
    Archive& archive;
    PreferencesRecord& preferences; ///< the archive's file, and whether each change is saved
    ProgramSettings& settings;      ///< exact forms of its folders
    Folders folders;
};

} // namespace kestrova
