#pragma once

#include "session/session.h"

namespace kestrova
{

/// Encodes a wave that the person chooses, by the session's settings, into the program's own folder
/// and opens it for listening. `Stopped` when the person chose none, or passed it over.
Status TestMp3Sound(Session& session);

} // namespace kestrova
