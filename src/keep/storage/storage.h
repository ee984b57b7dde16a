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

} // namespace kestrova
