#pragma once

#include "saves/level_savegames.h"

namespace kestrova
{

/// Deletes live and archived savegames with their notes and pictures, once they are in the history;
/// those that only the history has are left alone. It can be undone.
Status DeleteSavegames(const ArchiveParts& parts, LevelCode code,
                       const std::vector<LevelSavegame>& chosen);

} // namespace kestrova
