#pragma once

#include "intake/intake.h"
#include "intake/source_tree.h"

/// How files come into a draft. Each of these is followed by the steps that a change of the folder
/// asks for. What fails is told where it fails.
namespace kestrova
{

/// False when nothing came in, or not all: the person cancelled, or it failed.
bool AddChosenFile(Intake& intake);
bool AddChosenFolder(Intake& intake);
/// Files, packages and folders together make one level. `Stopped`, or `NotDone` when not all of it
/// came in, which was told.
Status AddSources(Intake& intake, const std::vector<Path>& sources,
                  Subfolders subfolders = Subfolders::Ask);
/// The packages anew, their names read in that code page: what came out of them goes, and comes in
/// once more. False, with a message, when a package is gone or fails.
bool ReadNamesAs(Intake& intake, const std::string& page);

/// Looks at the folder anew; packages in it are unpacked one level deep. Only a Stop is answered.
Status Refresh(Intake& intake);
/// Refreshes until no package is left, or they lie deeper in each other than anybody makes them.
/// Which ones stay is told. `Stopped`, or `NotDone` when one failed.
Status UnpackAll(Intake& intake);
/// Both, unless the first was stopped or gave the level up.
Status AddWhole(Intake& intake, const std::vector<Path>& sources);

} // namespace kestrova
