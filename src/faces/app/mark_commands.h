#pragma once

#include "app/command.h"
#include "formats/library_note.h"

namespace kestrova
{

/// What a person says of levels: how far they are, stars, tags, a note, a cover.
std::span<const CommandRow> MarkCommands();

/// The keys of a level's note in a result.
void AddNote(Json& level, const LevelNote& note);
/// A line for each thing that is noted.
void ShowNote(Run& run, const LevelNote& note);

} // namespace kestrova
