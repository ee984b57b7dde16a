#pragma once

#include "session/session.h"

namespace kestrova
{

/// Where the desktop does not tell of keys during play: says once, and never again in this
/// program's folder, how to get them.
void TellOfUnseenKeysOnce(Session& session);

} // namespace kestrova
