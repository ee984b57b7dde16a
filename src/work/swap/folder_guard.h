#pragma once

#include "swap/swap_parts.h"

/// Whether the Level Editor's folder may be changed: a program that runs there reads its files and
/// writes into them. Every operation that changes the folder asks here, so no face can forget it.
namespace kestrova
{

/// The programs that run in the Level Editor's folder; the game that was started from here counts
/// wherever it runs.
std::vector<platform::RunningProgram> ProgramsInTrle(const SwapParts& parts,
                                                     const Folders& folders);

/// True when no program runs in the Level Editor's folder, or the person goes on nevertheless. The
/// answer holds for the whole operation under way, which asks before anything changes and, when it
/// is False, stops without a further word.
bool MayChangeTrle(const SwapParts& parts, const Folders& folders);

/// True when no game runs beside the one that is to be started, or the person wants both.
bool MayStartBesideOthers(const SwapParts& parts, const Folders& folders);

/// True when that level stands in the Level Editor's folder and no work on it waits to be mended:
/// playing it changes no file.
bool StandsInTrle(Machine& machine, const Folders& folders, const Archive& archive, LevelCode code);

} // namespace kestrova
