#pragma once

#include "conversion/sound_converter.h"
#include "session/folders.h"
#include "session/host.h"
#include "session/machine.h"

namespace kestrova
{

/// Encodes a wave that the person chooses, by the session's settings, into the program's own folder
/// and opens it for listening. `Stopped` when the person chose none, or passed it over.
Status TestMp3Sound(Host& host, Machine& machine, const Folders& folders,
                    const SoundConverter& converter);

} // namespace kestrova
