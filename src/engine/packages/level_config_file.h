#pragma once

#include "formats/level_config.h"
#include "session/host.h"

namespace kestrova
{

/// Where a folder of level files has its configuration file.
Path LevelConfigPath(const Path& folder);
/// Shows its failure; `config` is as it was then.
bool ReadLevelConfig(Host& host, const Path& file, LevelConfig& config);
/// What an old longer file leaves of itself.
enum class OldConfig { KeepsItsTail, Replaced };
/// Shows its failure; the file is as it was then.
bool WriteLevelConfig(Host& host, const Path& file, const LevelConfig& config,
                      OldConfig old = OldConfig::KeepsItsTail);

} // namespace kestrova
