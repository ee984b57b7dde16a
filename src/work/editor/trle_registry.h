#pragma once

#include "session/folders.h"
#include "session/host.h"
#include "tools/tools.h"

#include <vector>

/// What Wine's registry knows of the Level Editor.
namespace kestrova
{

struct RegisteredEditor {
    Path folder; ///< as the registry has it; it may be gone
    Path prefix; ///< whose registry
};

/// What the registries of all known prefixes say.
std::vector<RegisteredEditor> RegisteredEditors(const Folders& folders);

/// The folder that the system knows for `winroomedit.exe`: the first that passes for a Level
/// Editor's folder, or else the first that a registry names; empty when none does.
Path TrlePathFromRegistry(const Folders& folders);

} // namespace kestrova
