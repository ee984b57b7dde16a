#pragma once

#include "originals/vault.h"

namespace kestrova
{

/// Takes away a folder that an outside program made where a file belongs: what it holds goes to the
/// vault first. `root`: the Level Editor's folder or its backup. Without a folder nothing is done.
/// A failure when something in it can be neither kept nor deleted; that stays.
Status RemoveFolderInTheWay(Machine& machine, const Folders& folders, const Path& root,
                            const Path& relative);

/// A file of the same root that nobody can read is moved to the vault, which lists it by its name.
Status MoveUnreadable(const Folders& folders, const Path& root, const Path& relative);

} // namespace kestrova
