#pragma once

#include "session/session.h"

namespace kestrova
{

/// Asks where, and makes a practice Level Editor's folder there, or takes the one that is there
/// already. The folder `trle`; none when the person gave up or it failed, which is told. The
/// choosers for level packages then open at the practice levels, unless the player has set a
/// folder.
std::optional<Path> OfferPracticeFolder(Session& session);

} // namespace kestrova
