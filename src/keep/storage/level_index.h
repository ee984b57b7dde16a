#pragma once

#include "storage/storage.h"

namespace kestrova
{

/// Writes a level's `tr4.inf`: true names and sizes of the files that are to be stored; those of a
/// compressed file are the ones that the index has.
Status WriteLevelIndex(const Folders& folders, LevelCode code, const std::vector<LevelFile>& files);

} // namespace kestrova
