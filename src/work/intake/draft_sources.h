#pragma once

#include "intake/intake.h"
#include "intake/source_tree.h"

/// How files come into a draft. Each of these is followed by the steps that a change of the folder
/// asks for, and answers False when nothing came in, or not all: the person cancelled, or it
/// failed.
namespace kestrova
{

bool AddChosenFile(Intake& intake);
bool AddChosenFolder(Intake& intake);
/// Files, packages and folders together make one level.
bool AddSources(Intake& intake, const std::vector<Path>& sources,
                Subfolders subfolders = Subfolders::Ask);
/// The packages anew, their names read in that code page: what came out of them goes, and comes in
/// once more. False, with a message, when a package is gone or fails.
bool ReadNamesAs(Intake& intake, const std::string& page);

/// Looks at the folder anew; packages in it are unpacked one level deep.
void Refresh(Intake& intake);
/// Refreshes until no package is left, or they lie deeper in each other than anybody makes them.
/// Which ones stay is told. False when one failed, or when the person stopped it.
bool UnpackAll(Intake& intake);

} // namespace kestrova
