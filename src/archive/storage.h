#pragma once

#include "session/session.h"

/// The stored form of a level's files: waves as mp3 where the archive wishes so, `.tr4`, `.wav` and
/// `.mp3` deflated to `.zl`, `load.bmp` as `load.jpg`, everything else as it is.
namespace kestrova
{

/// A file on its way into a level, and what it is called there.
struct LevelFile {
    std::string name;
    Path path;
};

/// What form files take.
enum class StoreAs {
    ArchiveSays,
    Plain ///< as they are, whatever the archive's preferences say
};

/// Puts files in stored form into a level's `files`, whatever was there before; shows its failure.
/// The new folder is filled as `files.new`, read back, compared, and exchanged by rename; the
/// sources stay as they are. Notes the true names and sizes in `tr4.inf` first. The level's record
/// need not be in the archive yet. `label` may be null. A file whose stored form would take another
/// file's name stays as it is, and is named.
bool StoreFilesOfLevel(Session& session, LevelCode code, const std::vector<LevelFile>& files,
                       ProgressScope* label, StoreAs form = StoreAs::ArchiveSays);

/// The same with the files of a folder. When that is the level's own `files`, each file takes its
/// stored form in place, and goes only when that was read back.
bool StoreLevelFiles(Session& session, const Path& source, LevelCode code, ProgressScope* label,
                     StoreAs form = StoreAs::ArchiveSays);

/// Expands a stored folder into the temporary folder `_temp_Dec`. `result` stays empty when nothing
/// had to be done; otherwise the caller removes it with `RemoveFolder`. Shows its failure; nothing
/// is left behind then. With `stopped` the person may stop it, which that says afterwards.
bool UnstoreLevelFiles(Session& session, const Path& folder, Path& result, bool mp3ToWave,
                       bool* stopped = nullptr);

/// A file of a level as the game needs it, ready to be put in place.
struct ReadyFile {
    std::string name;   ///< as it is called in the Level Editor's folder
    Path path;          ///< where its bytes are now
    bool moved = false; ///< in the staging folder: may be moved instead of copied
    std::uint64_t size = 0;
    std::int64_t modifiedNs = 0;
};

/// What a stored folder gives, in listing order, without touching anything: names and sizes of the
/// files as the game needs them, an mp3 as the wave that it becomes, whose size is told to within
/// a block. `path` is the stored file.
Result<std::vector<ReadyFile>> PlanLevelFiles(const Path& folder);

/// Makes the files of a stored folder ready: what is compressed is expanded into `staging` (made
/// when needed, on all cores), the rest stays where it is. Proves every `.zl` on the way. With
/// `mp3ToWave` mp3 files become waves of the game's form; a failure there is shown, and comes back
/// as `Stopped`. On a failure the staging folder is removed and the failure names the file; nothing
/// else was changed.
Result<std::vector<ReadyFile>> ReadyLevelFiles(Session& session, const Path& folder,
                                               const Path& staging, bool mp3ToWave,
                                               ProgressScope* progress);

/// Expands one file into `_temp_` of the program's folder; the copy's path, empty on failure, which
/// it shows.
Path DecompressSingleFile(Session& session, const Path& file, bool showDialog);

} // namespace kestrova
