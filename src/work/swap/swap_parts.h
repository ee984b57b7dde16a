#pragma once

#include "conversion/sound_converter.h"
#include "history/change_parts.h"
#include "session/session.h"

namespace kestrova
{

/// What the steps of a swap, and of its mending, need of a session, which becomes it by itself.
struct SwapParts {
    SwapParts(Session& session)
        : host(session.host), machine(session.machine), archive(session.archive),
          preferences(session.preferences), settings(session.settings), locks(session.locks),
          running(session.runningOperations), gamePid(session.gamePid), folders(session.Folders()),
          sounds(SoundConverterOf(session))
    {
    }
    operator ChangeParts() const { return {machine, folders, archive, settings}; }

    Host& host;
    Machine& machine;
    const Archive& archive;
    PreferencesRecord& preferences; ///< the person may say where the folder is now
    const ProgramSettings& settings;
    FolderLocks& locks;
    RunningOperations& running;
    const std::int64_t& gamePid; ///< the game started last; 0 when none was
    Folders folders;             ///< as they were when the steps began
    SoundConverter sounds;
};

} // namespace kestrova
