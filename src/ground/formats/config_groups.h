#pragma once

#include "formats/level_config.h"

/// What the lists of a level's configuration file ask for, in groups. A stranger wrote them: before
/// one of these texts becomes a file, `IsLevelFileName` has to hold for it.
namespace kestrova
{

/// Files come in once more, under the same ending and another stem.
struct StemCopy {
    std::string pattern; ///< which files
    std::string stem;    ///< what they are called then; any text
    bool operator==(const StemCopy&) const = default;
};

/// A wave of a game's disc.
struct ExternWave {
    std::string cd;          ///< one of `OnDisk::ConfigCdCodes`, or any text
    std::string source;      ///< its name in the folder `audio` of the disc
    std::string target;      ///< its name in the level
    std::string alternative; ///< under which the same sound may be at hand already
    bool operator==(const ExternWave&) const = default;
};

/// A package of wads that the Level Editor must have.
struct WadNeed {
    std::string check; ///< a file of it, by which it is known to be there
    std::string url;   ///< where it comes from; any text
    bool operator==(const WadNeed&) const = default;
};

/// Within the level's own files.
std::vector<StemCopy> DuplicatesOf(const LevelConfig& config);
/// Out of the Level Editor's wads, or else the level's own.
std::vector<StemCopy> TomWadsOf(const LevelConfig& config);
std::vector<ExternWave> ExternWavesOf(const LevelConfig& config);
std::vector<WadNeed> WadNeedsOf(const LevelConfig& config);

/// True for what can be the name of a file of a level: it leads nowhere else, is a name on every
/// system that the level may come to, is listed like any other, and is no pattern.
bool IsLevelFileName(std::string_view name);

/// What a name becomes in the list of files, whose letters are those of Windows-1252, folded.
std::string ListedForm(std::string_view name);

} // namespace kestrova
