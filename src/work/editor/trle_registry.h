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

/// Writes the folder into the registry of the prefix that it lies in, or else of the first one that
/// is known, through Wine's own `reg`. Where there is no prefix there is nothing to be done.
Status RegisterEditor(const Tools& tools, const Folders& folders, const Path& trle,
                      ProgressScope& progress);

} // namespace kestrova
