#pragma once

#include "session/session.h"

namespace kestrova
{

/// What a person says beforehand; what is not said is asked.
struct RecoverWish {
    Path folder;             ///< of the levels; empty: asked, with all that follows
    std::vector<Path> discs; ///< discs' folders, the folders that they are mounted in, or images
    bool takeAside = false;  ///< levels that were set aside come onto the list too
};

/// Makes the list of an archive anew from the folders of its levels; no file that is there is
/// overwritten. The archive that was loaded before is left as it is, its changes offered for
/// saving. False, with words, when no list was made.
bool RecoverArchive(Session& session, const RecoverWish& wish = {});

} // namespace kestrova
