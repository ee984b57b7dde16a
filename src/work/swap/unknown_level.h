#pragma once

#include "swap/swap_parts.h"

/// A level that stands in the Level Editor's folder and of which a marker alone speaks.
namespace kestrova
{

/// True when neither a record of the standing level nor a backup of this folder is there, as after
/// the program's own folder was lost.
bool IsUnknownLevel(const Folders& folders);
/// The savegames of such a level go to the history, then its marker goes. Told; may be repeated.
bool ForgetLevel(const SwapParts& parts, LevelCode code);

} // namespace kestrova
