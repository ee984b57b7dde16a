#pragma once

#include "core/files.h"
#include "formats/level_config.h"

namespace kestrova
{

/// Where a folder of level files has its configuration file.
Path LevelConfigPath(const Path& folder);
Result<LevelConfig> ReadLevelConfig(const Path& file);
/// What an old longer file leaves of itself.
enum class OldConfig { KeepsItsTail, Replaced };
/// The file is as it was after a failure.
Status WriteLevelConfig(const Path& file, const LevelConfig& config,
                        OldConfig old = OldConfig::KeepsItsTail);

} // namespace kestrova
