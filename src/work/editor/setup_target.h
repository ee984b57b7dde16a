#pragma once

#include "editor/setup_parts.h"
#include "formats/setup_note.h"

/// The folder that a setup makes.
namespace kestrova
{

/// What is offered: below the first known Wine prefix, or else in the person's data folder; the
/// first name there that nothing stands under.
Path ProposedTarget(const Folders& folders);

/// Where the wish's folder really lies, links followed. A failure in words unless it can be made
/// there: it must hold nothing, lie apart from what the setup comes from, and not among the files
/// of this program, of an archive, of a level or of the Level Editor in use.
Result<Path> TargetOf(const SetupWish& wish, const Folders& folders);

/// The finished tree, flushed, takes the place of the target, which holds nothing. What stood there
/// when another program was faster stays, and the tree too.
Status PutInPlace(const Path& tree, const Path& target);

/// Before the tree is put in its place; the next run goes on by it.
Status NoteSetup(const Folders& folders, const Path& tree, const SetupNote& note);
/// The note of a setup whose tree stands there, links followed; none otherwise.
std::optional<SetupNote> UnfinishedSetupAt(const Folders& folders, const Path& wished);
Status ForgetSetup(const Folders& folders);

} // namespace kestrova
