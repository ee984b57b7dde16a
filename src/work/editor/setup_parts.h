#pragma once

#include "conversion/sound_converter.h"
#include "editor/setup_languages.h"
#include "session/folders.h"
#include "session/host.h"
#include "tools/bounded_run.h"

#include <vector>

namespace kestrova
{

/// What a setup of the Level Editor needs of a session.
struct SetupParts {
    Host& host;
    Machine& machine;
    Folders folders;
    SoundConverter converter; ///< with the tools
    ProgressScope& progress;
    RunBounds bounds{}; ///< of one run of the compiler
};

/// What the person wants.
struct SetupWish {
    std::vector<Path> zips{}; ///< unpacked one after the other; empty for a setup from a folder
    Path folder{};            ///< that the setup comes from, or one with a folder `trle` of it
    Path target{};            ///< the Level Editor's folder to be
    const SetupLanguage* language = &SetupLanguages().front();
    bool fromZips = false;
};

} // namespace kestrova
