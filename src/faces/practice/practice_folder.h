#pragma once

#include "core/names.h"
#include "core/result.h"
#include "formats/drive_setting.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace kestrova
{

/// Files done, files in all, and the name of the file or pack at work. False stops.
using PracticeProgress = std::function<bool(int done, int total, const std::string& what)>;

struct PracticeOptions {
    /// About the size of the big level; less makes it faster, for tests.
    std::uint64_t bigLevelBytes = 100'000'000;
};

/// The programs that are copied into it.
struct PracticePrograms {
    Path game;           ///< becomes `tomb4.exe`
    Path compiler;       ///< `tom2pc.exe`
    Path scriptCompiler; ///< `script/script.exe`
    Path setup;          ///< of it the setup programs among the packages are made
};

/// The stand-ins that were built or installed in that folder.
PracticePrograms StandInsIn(const Path& folder);

/// What a practice folder holds.
struct PracticePlaces {
    Path trle;     ///< passes for a Level Editor's folder
    Path levels;   ///< a folder a level, some also as zips
    Path packages; ///< levels that need work, folders and zips: sources, setups, wads
    Path discs;    ///< files that are blank discs, and where a drive shows its disc
};
PracticePlaces PlacesIn(const Path& dir);

struct PracticeMade : PracticePlaces {
    std::vector<Path> zips; ///< of the levels
    std::string remark;     ///< what could not be made, in words; empty otherwise
};

/// Makes `dir`/trle, with the stand-ins as its programs, `dir`/levels, `dir`/packages and
/// `dir`/discs, all from content of our own that is the same in every run. Whole or not at all: it
/// is made aside and renamed at the end. `Refused` with words when one of them is there, `Missing`
/// with words when a program is not, `Stopped` by the progress.
Result<PracticeMade> MakePracticeFolder(const Path& dir, const PracticePrograms& programs,
                                        const PracticeProgress& progress,
                                        const PracticeOptions& options = {});

/// The drive of the settings that belongs to a practice folder, by its Level Editor's folder; none
/// for any other folder. It writes, and its discs are so small that the five levels take three.
std::optional<DriveSetting> PracticeDrive(const Path& trle);

} // namespace kestrova
