#pragma once

#include "core/activity_log.h"
#include "formats/preferences.h"
#include "session/folders.h"

namespace kestrova
{

/// Writes the log as a new file of the program's folder when the preferences ask for it.
Status WriteActivityLog(const Folders& folders, const PreferencesRecord& preferences,
                        const ActivityLog& log);

} // namespace kestrova
