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
          running(session.running), folders(session.Folders()), sounds(SoundConverterOf(session))
    {
    }
    operator ChangeParts() const { return {machine, folders, archive, settings}; }

    Host& host;
    Machine& machine;
    const Archive& archive;
    PreferencesRecord& preferences; ///< the person may say where the folder is now
    const ProgramSettings& settings;
    FolderLocks& locks;
    Running& running;
    Folders folders; ///< as they were when the steps began
    SoundConverter sounds;
};

} // namespace kestrova
