#pragma once

#include "editor/wad_windows.h"

#include <functional>

/// Windows that a step of a level's intake asks for.
namespace kestrova
{

class InstalledPlace;
class TomAssistant;
class TomCompile;

/// Each shows a state without windows until the person leaves it. One that is empty cannot be
/// shown, as in the terminal: a step does without it, or refuses and names the words that take its
/// place.
struct IntakeWindows {
    /// Links tom files with wads; True when each of them has some.
    std::function<bool(TomAssistant& assistant)> assistant{};
    /// A person compiles by hand what the lent folder holds, until it is done or given up.
    std::function<void(TomCompile& compile)> compile{};
    /// Of the wad packages that a level asks for.
    WadWindows wads{};
    /// A person says where an installer put a level's files.
    std::function<void(InstalledPlace& place)> installed{};
};

} // namespace kestrova
