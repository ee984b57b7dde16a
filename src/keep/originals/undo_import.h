#pragma once

#include "originals/import_entries.h"
#include "session/machine.h"

/// An import that is done is undone, and done again: its files and those from before take turns.
namespace kestrova
{

/// Whether all of an import stands as it left it; a failure in words names what does not.
Status MayUndoImport(const Folders& folders, const ImportNote& entry, const Heartbeat& beat = {});
/// Takes an import back, or does one again that was taken back. What goes is kept first, and a new
/// entry leads back. `Stopped` while nothing has been changed yet.
Status UndoImport(Machine& machine, const Folders& folders, ImportNote entry,
                  const Heartbeat& alive = {});

} // namespace kestrova
