#pragma once

#include "session/session.h"

namespace kestrova
{

enum class PlannedAction { Add, Overwrite, Restore, Remove };

struct PlannedFile {
    PlannedAction action = PlannedAction::Add;
    std::string file; ///< `\data\level1.tr4`
    std::uint64_t size = 0;
};
/// What a swap to that level would do to the folder; touches nothing.
Result<std::vector<PlannedFile>> PlanSwap(const Folders& folders, const Archive& archive,
                                          const PreferencesRecord& preferences, LevelCode code);

} // namespace kestrova
