#pragma once

#include "swap/whereabouts.h"

namespace kestrova
{

/// What a killed import of wads had put into the Level Editor's folder and its backup goes, and
/// what stood there is back; says so. One that was whole already stays. Without one nothing is
/// done. False, with words, when it could not, and nobody may work on the folder. One whose folder
/// is not there keeps waiting, and holds up nothing.
bool TakeImportBack(const SwapParts& parts, const Whereabouts& said);

} // namespace kestrova
