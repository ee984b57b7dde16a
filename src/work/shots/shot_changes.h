#pragma once

#include "formats/change_note.h"
#include "history/change_parts.h"

#include <functional>

/// What a person does with pictures, as changes that can be undone.
namespace kestrova
{

/// A change of the pictures of a level.
Change ShotChange(const ChangeParts& parts, ChangeKind kind, LevelCode code,
                  const std::string& subject);
/// Replaces or deletes pictures of one folder, as the change's `folders` say; an entry is left.
Status MakeShotChange(const ChangeParts& parts, const Change& change);
/// Pictures that came under names that were free.
void NoteNewShots(const Folders& folders, const ProgramSettings& settings, Change change,
                  const std::vector<Path>& files);

/// A picture that is written now: `write` puts it where it is told. Another one that stands at
/// `place` gives way in one step, and is in the history.
Status WriteShot(const ChangeParts& parts, Change change, const Path& place,
                 const std::function<Status(const Path&)>& write);

} // namespace kestrova
