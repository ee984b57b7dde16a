#pragma once

#include "session/mp3_settings.h"
#include "session/session.h"
#include "tools/tools.h"

namespace kestrova
{

/// What it takes to bring sounds from one form to another. A value, as `Tools` is.
struct SoundConverter {
    Tools tools;
    Mp3Settings mp3Settings; ///< how waves are encoded
};

/// What the session has of it, as it is now.
SoundConverter SoundConverterOf(Session& session);

} // namespace kestrova
