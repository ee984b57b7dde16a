#pragma once

#include "formats/import_note.h"
#include "session/session.h"

#include <optional>

/// Imports of wads undone, and done again.
namespace kestrova
{

/// True for an import into the Level Editor's folder in use.
bool IsOfThisFolder(const Folders& folders, const ImportNote& entry);
/// The newest import of this folder that was, or was not, undone, of those below the number
/// `before`; none without one, or while they cannot be read.
std::optional<ImportNote> NewestImport(const Folders& folders, UndoState state = UndoState::Done,
                                       std::int32_t before = importIdLimit);
/// Takes an import back, or does one again that was undone, the level in play out first. False,
/// with words, when something of it has changed since: nothing is changed then, nor when it is
/// stopped, which is not told.
bool UndoWads(Session& session, const ImportNote& entry);
/// The same with the newest import; says so when there is none.
bool UndoNewestImport(Session& session, std::string& subject);

} // namespace kestrova
