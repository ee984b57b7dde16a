#pragma once

#include "conversion/sound_converter.h"
#include "session/archive.h"
#include "session/folders.h"
#include "session/host.h"

/// The stored form of a level's files: waves as mp3 where the archive wishes so, `.tr4`, `.wav` and
/// `.mp3` deflated to `.zl`, `load.bmp` as `load.jpg`, everything else as it is.
namespace kestrova
{

class ReadyStreams;

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

/// Tells a failure to convert sounds, and asks whether the others are stored without them. None:
/// No.
using AcceptLoss = std::function<bool(const Failure& failure)>;

/// Puts files in stored form into a level's `files`, whatever was there before.
/// The new folder is filled as `files.new`, read back, compared, and exchanged by rename; the
/// sources stay as they are. Notes the true names and sizes in `tr4.inf` first. The level's record
/// need not be in the archive yet. `label` may be null. A file whose stored form would take another
/// file's name stays as it is, and is named. `NotDone` when sounds were not converted and their
/// loss is not accepted, which was told with that question. `ready` has streams that were made
/// ahead; null: none.
Status StoreFilesOfLevel(Host& host, const Folders& folders, const Archive& archive,
                         const SoundConverter& converter, LevelCode code,
                         const std::vector<LevelFile>& files, ProgressScope* label,
                         StoreAs form = StoreAs::ArchiveSays, const AcceptLoss& accept = {},
                         const ReadyStreams* ready = nullptr);

/// The same with the files of a folder. When that is the level's own `files`, each file takes its
/// stored form in place, and goes only when that was read back.
Status StoreLevelFiles(Host& host, const Folders& folders, const Archive& archive,
                       const SoundConverter& converter, const Path& source, LevelCode code,
                       ProgressScope* label, StoreAs form = StoreAs::ArchiveSays,
                       const AcceptLoss& accept = {}, const ReadyStreams* ready = nullptr);

} // namespace kestrova
