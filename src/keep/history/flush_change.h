#pragma once

#include "formats/change_note.h"
#include "session/folders.h"

namespace kestrova
{

/// Everything that the change wrote, and its note, is on the disk when it answers.
Status FlushChange(const Folders& folders, const Change& change);

} // namespace kestrova
