#include "ui/main/kept_preferences.h"

#include "session/preferences_file.h"
#include "session/telling.h"

#include <utility>

namespace kestrova
{

void KeptPreferences::Keep()
{
    const auto kept =
        SavePreferencesNow(session_.Folders(), session_.preferences, session_.settings);
    if (!kept && !std::exchange(told_, true))
        DoneOrTold(session_.host, kept);
    told_ = told_ && !kept;
}

} // namespace kestrova
