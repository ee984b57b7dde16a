#pragma once

#include "session/session.h"

namespace kestrova
{

/// One level's stored sounds become what the archive wants now. A failure is told, and asked about
/// with the level's name; False ends the change over all levels.
bool ChangeLevelAudio(Session& session, const std::string& name, const Path& files);

} // namespace kestrova
