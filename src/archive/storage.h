#pragma once

#include "session/session.h"

/// The stored form of a level's files: `.tr4`, `.wav` and `.mp3` deflated to `.zl`, `load.bmp` as
/// `load.jpg`, everything else as it is.
namespace kestrova
{

/// Puts the source folder's files in stored form into the level's `files`. The source is changed
/// (files are compressed in it) but never loses a file before its stored form was read back. The
/// new `files` are built beside the old ones and exchanged by rename. `label` may be null.
bool StoreLevelFiles(Session& session, const Path& source, std::size_t index,
                     ProgressScope* label);

/// Expands a stored folder into the temporary folder `_temp_Dec`. `result` stays empty when nothing
/// had to be done; otherwise the caller removes it with `RemoveFolder`. Shows its failure; nothing
/// is left behind then.
bool UnstoreLevelFiles(Session& session, const Path& folder, Path& result, bool mp3ToWave);

/// A file of a level as the game needs it, ready to be put in place.
struct ReadyFile {
    std::string name;     ///< as it is called in the Level Editor's folder
    Path path;            ///< where its bytes are now
    bool moved = false;   ///< in the staging folder: may be moved instead of copied
    std::uint64_t size = 0;
    std::int64_t modifiedNs = 0;
};

/// What a stored folder gives, in listing order, without touching anything: names and sizes of the
/// files as the game needs them. `path` is the stored file.
Result<std::vector<ReadyFile>> PlanLevelFiles(const Path& folder);

/// Makes the files of a stored folder ready: what is compressed is expanded into `staging` (made
/// when needed, on all cores), the rest stays where it is. Proves every `.zl` on the way. On a
/// failure the staging folder is removed and the failure names the file; nothing else was changed.
Result<std::vector<ReadyFile>> ReadyLevelFiles(Session& session, const Path& folder,
                                               const Path& staging, bool mp3ToWave,
                                               ProgressScope* progress);

/// Expands one file into `_temp_` of the program's folder; the copy's path, empty on failure, which
/// it shows.
Path DecompressSingleFile(Session& session, const Path& file, bool showDialog);

} // namespace kestrova
