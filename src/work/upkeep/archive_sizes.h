#pragma once

#include "archive/archive_parts.h"

namespace kestrova
{

/// The command that measures all levels anew and shows what came out. False when the person
/// stopped it; what was measured until then is shown and kept.
bool ShowArchiveSizes(const ArchiveParts& parts);

} // namespace kestrova
