#pragma once

#include "intake/intake.h"

/// What the author's configuration file drives. It never becomes a file of the level.
namespace kestrova
{

/// A second one came, after the first one was applied.
bool LaterConfigCame(const Intake& intake);
/// It goes unread.
StepAnswer DropLaterConfig(Intake& intake);

/// Nobody has brought one yet.
bool LacksConfig(const Intake& intake);
/// Offers and fetches the one that the list of addresses has for this level; whatever fails, the
/// level can be added without.
StepAnswer SearchOnlineConfig(Intake& intake);

bool ConfigCame(const Intake& intake);
/// Takes its texts, and drops it; the draft has it for the steps that follow. One that cannot be
/// read stays where it is.
StepAnswer ReadConfig(Intake& intake);

/// The steps of this file are going on.
bool IsConfigRead(const Intake& intake);
/// It says that a program installs the level.
bool NamesProgram(const Intake& intake);
StepAnswer RunExeFormatFromConfig(Intake& intake);
/// Chooses its documentation; from here on it counts as applied.
StepAnswer EndConfig(Intake& intake);

/// The file has just been applied, and nobody wants the sources left as they are.
bool CompilesQuietly(const Intake& intake);
/// Compiles the sources at once when all that the file lists is there; otherwise without a word.
StepAnswer CompileQuietly(Intake& intake);

} // namespace kestrova
