#pragma once

#include "archive/archive_parts.h"

namespace kestrova
{

bool AskSaveArchiveAs(const ArchiveParts& parts);

} // namespace kestrova
