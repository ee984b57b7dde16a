#pragma once

#include "core/files.h"
#include "formats/import_note.h"
#include "session/folders.h"
#include "session/machine.h"

/// How an import into the Level Editor's folder and its backup is taken back, by its note alone: in
/// the run that made it, at the next start when that one was killed, and when a person undoes it.
/// `swap/import` of the program's folder is the note while something is under way;
/// `history/imports/NUMBER.json` has imports that are done, newest last, beside each a folder of
/// that number with what they replaced, by hash.
namespace kestrova
{

/// The root of one of both trees.
Path RootOf(const Folders& folders, ImportTree tree);

/// All that was written into the program's folder and both trees is on the disk.
Status FlushTrees(const Folders& folders);

/// No value when nothing is under way; `Damaged` for a note that nobody can read.
Result<std::optional<ImportNote>> ReadImportUnderway(const Folders& folders);
Status WriteImportUnderway(const Folders& folders, const ImportNote& note);
bool ImportWaits(const Folders& folders);
/// A note that nobody can read waits no more, and lies under the name that is the answer.
Result<Path> SetImportNoteAside(const Folders& folders);
/// The note goes, and what it kept: its folder is no longer wanted.
Status DropImportUnderway(const Folders& folders, const ImportNote& note);

/// Where the contents lie that an import replaced.
Path ImportContents(const Folders& folders, std::int32_t id);
/// A number above all others.
std::int32_t NextImportId(const Folders& folders);
/// The note of an import that is done becomes its entry; the oldest ones beyond some go.
Status NoteToImportEntry(const Folders& folders, const ImportNote& note);

/// Imports that can be undone, oldest first; what cannot be read is passed over.
Result<std::vector<ImportNote>> ReadImports(const Folders& folders);

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

/// Whether all of an import that is done stands as it left it; a failure in words names what does
/// not.
Status MayUndoImport(const Folders& folders, const ImportNote& entry, const Heartbeat& beat = {});
/// Takes an import back that is done.
Status UndoImport(Machine& machine, const Folders& folders, ImportNote entry,
                  const Heartbeat& alive = {});

} // namespace kestrova
