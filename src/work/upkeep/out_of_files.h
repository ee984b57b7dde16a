#pragma once

#include "core/names.h"
#include "core/result.h"

#include <string_view>

namespace kestrova
{

/// Takes a file that is about to give way out of the folder whose files are the level: into that
/// folder of the level's own (`DirUnreadable`, `DirReplaced`), under its name or one with a number.
/// Answers where it lies now.
Result<Path> TakeOutOfFiles(const Path& home, std::string_view into, const Path& file);

} // namespace kestrova
