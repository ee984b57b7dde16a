#pragma once

#include "session/session.h"

namespace kestrova
{

/// Starts the Wine of these settings to hear its version, and tells the person what was found: the
/// version, the part for 32-bit programs, the prefix, and whether the game would start. What is
/// missing is told with what to do about it. True when nothing is.
bool TryWine(Session& session, const ProgramSettings& settings);

} // namespace kestrova
