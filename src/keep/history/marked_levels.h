#pragma once

#include "archive/library_notes.h"
#include "history/changes.h"

/// What a player says of levels, as a change that can be undone. The notes of an archive are
/// written in one step, so such a change touches no other file; the tokens of the levels' folders
/// tell whether they are the ones that it was said of.
namespace kestrova
{

/// The change that was made just now, for `NoteDone`. No value where nothing is different.
std::optional<Change> MarkingOf(const ChangeParts& parts, const std::vector<ChangedNote>& changed);
/// The number of a level of which something else was said since, of those that the change is about
/// and that are still there; no value when all is as the change left it, or as it was before.
Result<std::optional<LevelCode>> OtherwiseMarked(const Folders& folders, const Archive& archive,
                                                 const Change& change);
/// After a change by which a picture has another name: where it stands for its level, it still
/// does.
Status FollowRenamedCover(const Folders& folders, const Archive& archive, const Change& change);
/// Says all of it of the levels that are still there.
Status MarkAsSaid(const Folders& folders, const Archive& archive, const Change& change);

} // namespace kestrova
