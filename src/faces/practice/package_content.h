#pragma once

#include "practice/content.h"
#include "practice/setup_payload.h"

/// The practice packages as tables: levels that need work before they can be played, and a setup
/// of the Level Editor.
namespace kestrova
{

/// Those that consist of files alone, each a folder and a zip.
std::span<const PracticeLevel> PracticePackages();
/// The package whose `kestrova.cfg` asks for every step.
const PracticeLevel& PracticeEveryStep();

/// What each setup program installs.
const PracticeLevel& PracticeInstalled();

struct PracticeSetup {
    std::string_view folder; ///< behind the name that all of them have
    std::string_view name;   ///< of the program
    SetupKind kind;
    std::string_view head; ///< lines of its payload's head
};
std::span<const PracticeSetup> PracticeSetups();

/// What of the Level Editor's setup is not as in the practice folder itself.
const PracticeLevel& PracticeEditorSetup();

} // namespace kestrova
