#pragma once

#include "formats/archive_file.h"
#include "session/archive.h"
#include "session/folders.h"
#include "session/host.h"

#include <optional>

/// Folders of levels that are coming in bear a mark until the list has the level. One that still
/// bears it when no program works there any more is what a killed program left. The mark is empty
/// until the level is whole; from then on it holds the level's record, as an archive of that level
/// alone with its exact names behind it, so that a start can put it on the list.
namespace kestrova
{

/// The mark in the folder of a level that is coming in.
Path IntakeMark(const Path& levelFolder);
/// The list has the level; that is on the disk when it answers.
Status DropIntakeMark(const Path& levelFolder);
/// The level is whole: its folder is not cleared any more, whatever list is read. Durable.
Status MarkIntakeWhole(const Path& levelFolder, const LevelRecord& level);
/// What was whole is about to be removed again.
void MarkIntakeUnfinished(const Path& levelFolder);
/// The record of a level that is whole and that a kill may have kept from the list; no value for
/// any other folder.
Result<std::optional<LevelRecord>> WholeIntakeIn(const Path& levelFolder);
/// True for a folder of the archive whose mark says that the level is not whole, and that no level
/// of the list has.
Result<bool> IsUnfinishedIntake(const Folders& folders, const Archive& archive,
                                const Path& levelFolder);
/// Removes such a folder in one step of the disk; what of it is left then has a name that the next
/// start clears. To be called by the program that holds the archive.
Status ClearUnfinishedIntake(const Path& levelFolder);
/// All such folders of the archive's; empty when they cannot be looked through.
std::vector<Path> UnfinishedIntakes(const Folders& folders, const Archive& archive);
/// Clears those and says so; the level that came onto the list last bears no mark any more. Nothing
/// happens without an archive.
void ClearUnfinishedIntakes(Host& host, const Folders& folders, const Archive& archive);

} // namespace kestrova
