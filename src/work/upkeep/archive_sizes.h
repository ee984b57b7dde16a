#pragma once

#include "session/session.h"

namespace kestrova
{

/// The command that measures all levels anew and shows what came out. False when the person
/// stopped it; what was measured until then is shown and kept.
bool ShowArchiveSizes(Session& session);

} // namespace kestrova
