#pragma once

#include "core/files.h"

#include <string_view>

/// The notes of work that is under way, in `swap` of the program's folder.
namespace kestrova
{

/// Writes a note, whole or not at all; its folder is made when it is not there.
Status WriteWorkNote(const Path& file, std::string_view text, bool flush = true);
/// The work is done and its note goes; True when there was one. It is not flushed.
Result<bool> DropWorkNote(const Path& file);

} // namespace kestrova
