#pragma once

#include "intake/intake.h"

/// How the files of an accepted level come into the archive.
namespace kestrova
{

/// Before anything of a level of the archive is changed for good: its files are kept as they were,
/// if accepting changes any.
StepAnswer KeepBefore(Intake& intake);

/// Programs that play or start a level are no part of it.
StepAnswer DropTools(Intake& intake);
/// A configuration file that could not be read was told, and is no part of the level.
StepAnswer DropConfig(Intake& intake);

/// The files, if they are others than at the opening, in the form that the archive wants; the
/// record gets their sizes.
StepAnswer StoreDraft(Intake& intake);

} // namespace kestrova
