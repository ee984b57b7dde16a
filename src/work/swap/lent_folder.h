#pragma once

#include "swap/whereabouts.h"

namespace kestrova
{

/// The Level Editor's folder of that mark, wherever it is now: where the mark, `trle` or the person
/// says; empty when it is not there.
Path FindMarked(const Path& trle, const FolderMark& mark, const Whereabouts& said);

/// True when the folder is held for writing; told when somebody else has it. Whoever asked lets one
/// that is not the session's own go again.
bool HoldMarked(Host& host, FolderLocks& locks, const Path& folder);

/// Ends what an interrupted run left at work; says so. Only for who has the program's folder.
void EndForgottenWork(Host& host, const Tools& tools);

/// The Level Editor's folder that a killed compilation had lent comes back as it was; says so.
/// Without one nothing is done. False, with words, when it could not, and nobody may work on the
/// folder. One that is not there keeps waiting, and holds up nothing.
bool BringLentFolderBack(const SwapParts& parts, const Whereabouts& said);

} // namespace kestrova
