#pragma once

#include "session/session.h"

/// Stored files as they were before.
namespace kestrova
{

/// Expands a stored folder into the temporary folder `_temp_Dec`. `result` stays empty when nothing
/// had to be done; otherwise the caller removes it with `RemoveFolder`. Shows its failure; nothing
/// is left behind then. With `stopped` the person may stop it, which that says afterwards.
bool UnstoreLevelFiles(Session& session, const Path& folder, Path& result, bool mp3ToWave,
                       bool* stopped = nullptr);
/// Expands one file into `_temp_` of the program's folder; the copy's path, empty on failure, which
/// it shows.
Path DecompressSingleFile(Host& host, Machine& machine, const Folders& folders, const Path& file,
                          bool showDialog);

} // namespace kestrova
