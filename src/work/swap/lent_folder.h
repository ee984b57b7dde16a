#pragma once

#include "swap/whereabouts.h"

namespace kestrova
{

/// The Level Editor's folder that a killed compilation had lent comes back as it was; says so.
/// Without one nothing is done. False, with words, when it could not, and nobody may work on the
/// folder. One that is not there keeps waiting, and holds up nothing.
bool BringLentFolderBack(Session& session, const Whereabouts& said);

} // namespace kestrova
