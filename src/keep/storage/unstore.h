#pragma once

#include "conversion/sound_converter.h"
#include "session/folders.h"
#include "session/host.h"
#include "session/machine.h"

/// Stored files as they were before.
namespace kestrova
{

enum class MayStop { No, Yes };

/// Expands a stored folder into the temporary folder `_temp_Dec`, whose path is the answer; empty
/// when nothing had to be done. Otherwise the caller removes it with `RemoveFolder`. Nothing is
/// left behind by a failure. With `MayStop::Yes` the person may stop it.
Result<Path> UnstoreLevelFiles(Host& host, Machine& machine, const SoundConverter& converter,
                               const Path& folder, bool mp3ToWave, MayStop mayStop = MayStop::No);
/// Expands one file into `_temp_` of the program's folder; the copy's path.
Result<Path> DecompressSingleFile(Host& host, Machine& machine, const Folders& folders,
                                  const Path& file, bool showDialog);

} // namespace kestrova
