#pragma once

#include "archive/archive_parts.h"
#include "conversion/sound_converter.h"
#include "swap/verify_level.h"
#include "upkeep/repair_sources.h"

namespace kestrova
{

struct RepairedFile {
    std::string file;
    std::string where; ///< where its content was found
};
struct UnrepairedFile {
    LevelFault fault;
    std::string remedy; ///< why not, and what to do
};
/// What became of a level's damaged and missing files.
struct RepairedLevel {
    std::vector<RepairedFile> repaired;
    std::vector<UnrepairedFile> left;
};

/// Brings back what can be: each file as its hash was noted, from the first source that holds it.
/// All of it is one change that can be undone; what the repair replaces is kept with it. A failure
/// when nothing could be changed, `Stopped` when the person ended it before anything was.
Result<RepairedLevel> RepairLevel(const ArchiveParts& parts, const SoundConverter& sounds,
                                  LevelCode code, const CheckedLevel& checked,
                                  RepairSources& sources, ProgressScope& progress);

} // namespace kestrova
