#pragma once

#include "session/session.h"

namespace kestrova
{

/// Encodes a wave that the person chooses, by the session's settings, into the program's own folder
/// and opens it for listening. Shows its failure. False when there is nothing to listen to.
bool TestMp3Sound(Session& session);

} // namespace kestrova
