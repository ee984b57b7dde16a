#include "play/play_words.h"

#include "session/preferences_file.h"
#include "session/telling.h"
#include "words/play.h"

namespace kestrova
{

void TellOfUnseenKeysOnce(Session& session)
{
    if (session.machine.SeesKeys() || session.settings.unseenKeysTold)
        return;
    session.settings.unseenKeysTold = true;
    const std::string gap = std::string{lineBreak}.append(lineBreak);
    session.host.Tell(Tone::Plain, GetMsg(Msg::KeysNotSeen, {gap, gap}));
    DoneOrTold(session.host,
               SavePreferencesNow(session.Folders(), session.preferences, session.settings));
}

} // namespace kestrova
