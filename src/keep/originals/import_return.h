#pragma once

#include "originals/import_entries.h"
#include "session/machine.h"

/// How an import into the Level Editor's folder and its backup is taken back, by its note alone: in
/// the run that made it, at the next start when that one was killed, and when a person undoes it.
namespace kestrova
{

/// By whom files were put where nothing is noted of what came there.
enum class ImportEnd {
    Own,      ///< by the run that takes the import back
    Recovered ///< by somebody else, perhaps
};
/// Each place becomes as it was, what came goes, and the note is dropped once all of it is on the
/// disk. What stands there and is neither as it was nor what came goes to the vault first; in a
/// backup that is not the one that the note names it stays. Goes on past a place that fails; the
/// first failure is the answer, and the note stays for the next attempt. What the heartbeat answers
/// counts for nothing.
Status ReturnImport(Machine& machine, const Folders& folders, const ImportNote& note, ImportEnd end,
                    const Heartbeat& alive = {});

} // namespace kestrova
