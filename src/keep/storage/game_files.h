#pragma once

#include "conversion/sound_converter.h"
#include "session/host.h"
#include "session/machine.h"

/// A level's files on their way into the Level Editor's folder.
namespace kestrova
{

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
/// `mp3ToWave` mp3 files become waves of the game's form; a failure there has its own sentence. On
/// a failure the staging folder is removed and the failure names the file; nothing else was
/// changed.
Result<std::vector<ReadyFile>> ReadyLevelFiles(Host& host, Machine& machine,
                                               const SoundConverter& converter, const Path& folder,
                                               const Path& staging, bool mp3ToWave,
                                               ProgressScope* progress);

} // namespace kestrova
