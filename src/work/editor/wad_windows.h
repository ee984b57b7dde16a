#pragma once

#include "core/names.h"
#include "editor/wad_scripts.h"

namespace kestrova
{

/// What an import of wads shows. One that is empty cannot be shown, as in the terminal.
struct WadWindows {
    /// Without it a new level keeps its original name.
    AskLevelName askName{};
    /// Shows an import of one package that runs by itself; True when it ran to its end. Without it
    /// the import runs unseen.
    std::function<bool(const Path& package)> show{};
};

} // namespace kestrova
