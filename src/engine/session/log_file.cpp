#include "session/log_file.h"

#include "words/session.h"

namespace kestrova
{

Status WriteActivityLog(const Folders& folders, const PreferencesRecord& preferences,
                        const ActivityLog& log)
{
    if (!preferences.writeLogFiles)
        return {};
    return Saying(GetMsg(Msg::CannotWriteLog), WriteLogFile(folders.program, log));
}

} // namespace kestrova
