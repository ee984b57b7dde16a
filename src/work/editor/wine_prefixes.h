#pragma once

#include "session/folders.h"

#include <vector>

/// The places in which Wine keeps its drives and its registry.
namespace kestrova
{

/// The prefixes that are known here and are there: the one that the surroundings name, the ones of
/// the Level Editor's folder and of the program's, the usual one, and those that other programs
/// keep below their own folders.
std::vector<Path> KnownPrefixes(const Folders& folders);

/// Where a path with a drive letter lies; an empty path for what has none, or leads out.
Path PathInPrefix(const Path& prefix, std::string_view windowsPath);

} // namespace kestrova
