#include "upkeep/change_level_audio.h"

#include "session/telling.h"
#include "storage/stored_audio.h"
#include "words/storage.h"

namespace kestrova
{

bool ChangeLevelAudio(Session& session, const std::string& name, const Path& files)
{
    const bool toMp3 = session.archive.header.wavInMp3;
    const auto changed = ChangeStoredAudio(session, files, toMp3);
    if (changed)
        return true;
    const ErrorCode code = changed.Error().code;
    const bool isRefused = code == ErrorCode::Refused;
    // What ended the conversion itself was seen in its window.
    if (!isRefused && code != ErrorCode::Stopped && code != ErrorCode::NotDone)
        TellFailure(session.host, changed.Error());
    if (!session.host.AskYesNo(GetMsg(Msg::AskErrorLevelAudio, {name + std::string{lineBreak}})))
        return false;
    // What can be converted is, and the rest stays as it is.
    if (isRefused)
        (void)ChangeStoredAudio(session, files, toMp3, UnfitSounds::Stay);
    return true;
}

} // namespace kestrova
