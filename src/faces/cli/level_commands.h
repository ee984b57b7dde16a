#pragma once

#include "cli/command.h"

namespace kestrova
{

Exit RunAuthor(Run& run);
Exit RunDocuments(Run& run);
Exit RunEqual(Run& run);
Exit RunExport(Run& run);
Exit RunIndex(Run& run);
Exit RunLanguage(Run& run);
Exit RunRecompress(Run& run);

} // namespace kestrova
