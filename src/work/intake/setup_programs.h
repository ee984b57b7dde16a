#pragma once

#include "core/names.h"

#include <vector>

/// Levels that come as a program, which unpacks or installs them itself.
namespace kestrova
{

/// The program among the files, in their order, that sets the level up: the last one, but for
/// decoders and readers of texts; one called `setup.exe` is it at once. Empty when there is none.
Path FindSetupExe(const std::vector<Path>& files);
/// What that program is, and what a person can do instead of running it here.
std::string WordsOfSetupExe(const Path& program);

} // namespace kestrova
