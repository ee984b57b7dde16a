#pragma once

#include "core/files.h"

#include <optional>

/// What a killed program leaves under names that no listing shows, and how the next one finds it:
/// each program notes a folder before the first thing is built there.
namespace kestrova
{

/// The process that a name of `StagedNameFor` belongs to; nothing for other names.
std::optional<std::int64_t> OwnerOfStaged(std::string_view name);

/// From now on this process notes its places for work in a file of its own in that folder, which is
/// made when the first one comes. Whatever is noted later goes by the last folder named.
void NotePlacesIn(const Path& folder);
/// Before something is built in `place`; each place is written once. A note that cannot be written
/// holds up nothing: what a kill leaves there stays until somebody looks through the whole folder.
void NotePlace(const Path& place);

/// What one process noted that does not run any more.
struct KilledNote {
    Path file;
    std::vector<Path> places;
};
std::vector<KilledNote> NotesOfKilled(const Path& folder);
/// The file tells of these places alone from now on; without any it goes.
void RewriteNote(const KilledNote& note);

/// What processes that do not run any more left under staged names in one folder itself.
std::vector<Path> LeftoversIn(const Path& place);
/// Removes that; what could not go is the answer.
std::vector<Path> ClearLeftoversIn(const Path& place);

} // namespace kestrova
