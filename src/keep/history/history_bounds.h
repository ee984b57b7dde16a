#pragma once

#include "history/history.h"

#include <set>

namespace kestrova
{

/// Takes the oldest entries out of a level's history until it keeps its bounds of the settings. An
/// entry whose content exists nowhere else stays, whatever the bounds say. Failures leave more than
/// the bound, never less, and are tried again with the next entry. `fresh`: hashes just kept, whose
/// files are about to go.
void BoundHistory(const Folders& folders, const ProgramSettings& settings, const LevelPlace& level,
                  const std::set<std::string>& fresh);

} // namespace kestrova
