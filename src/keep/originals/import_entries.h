#pragma once

#include "core/files.h"
#include "formats/import_note.h"
#include "session/folders.h"
#include "session/settings.h"

/// Imports into the Level Editor's folder and its backup, on the disk. `swap/import` of the
/// program's folder is the note while something is under way; `history/imports/NUMBER.json` has
/// imports that can be undone, or done again, newest last, beside each a folder of that number with
/// what it needs for that, by hash.
namespace kestrova
{

/// The root of one of both trees.
Path RootOf(const Folders& folders, ImportTree tree);
Path PlaceOfImport(const Folders& folders, const ImportPlace& place);
/// Hash of exactly that name's content; empty when no file has it.
Result<std::string> HashOfPlace(const Folders& folders, const ImportPlace& place);

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
/// What they take on the disk.
std::uint64_t BytesOfImport(const Folders& folders, std::int32_t id);
/// The note of an import that is done becomes its entry; the one that it undoes goes.
Status NoteToImportEntry(const Folders& folders, const ImportNote& note);
/// The note of an import that was taken back becomes the entry by which it is done again.
Status EndUndoing(const Folders& folders, const ImportNote& note);
/// Entry and contents go.
void DropImport(const Folders& folders, std::int32_t id);

/// Imports that can be undone or done again, oldest first; what cannot be read is passed over.
Result<std::vector<ImportNote>> ReadImports(const Folders& folders);
/// Takes the oldest ones away until the bounds of the settings hold; the newest stays in any case.
void BoundImports(const Folders& folders, const ProgramSettings& settings);

} // namespace kestrova
