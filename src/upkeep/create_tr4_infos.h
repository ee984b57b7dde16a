#pragma once

#include "session/session.h"

namespace kestrova
{

/// Writes the `tr4.inf` of every level that has none, from its files, however they are stored.
/// False, with a message, at the first level whose disc is missing or whose files cannot be
/// expanded: what was written until then stays.
bool CreateTr4Infos(Session& session);

} // namespace kestrova
