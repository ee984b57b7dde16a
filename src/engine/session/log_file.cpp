#include "session/log_file.h"

#include "session/telling.h"
#include "words/session.h"

namespace kestrova
{

void WriteActivityLog(Host& host, const Folders& folders, const PreferencesRecord& preferences,
                      const ActivityLog& log)
{
    if (!preferences.writeLogFiles)
        return;
    if (const auto status = WriteLogFile(folders.program, log); !status)
        TellFailure(host, GetMsg(Msg::CannotWriteLog), status.Error());
}

} // namespace kestrova
