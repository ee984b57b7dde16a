#pragma once

#include "formats/archive_file.h"
#include "session/archive.h"
#include "session/folders.h"

#include <vector>

namespace kestrova
{

/// Levels of the archive whose stored files were not whole when they were checked last. Nothing
/// where no check was noted, or one of another archive.
std::vector<LevelCode> HarmedAtLastCheck(const Folders& folders, const Archive& archive);
/// Notes what a check found: these levels were looked at, and those of them are harmed. What was
/// found of others stays noted.
void NoteLastCheck(const Folders& folders, const Archive& archive,
                   const std::vector<LevelCode>& checked, const std::vector<LevelCode>& harmed);

} // namespace kestrova
