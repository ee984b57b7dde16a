#include "upkeep/change_level_audio.h"

#include "conversion/sound_converter.h"
#include "session/telling.h"
#include "storage/stored_audio.h"
#include "words/storage.h"

namespace kestrova
{

bool ChangeLevelAudio(Session& session, const std::string& name, const Path& files)
{
    const bool toMp3 = session.archive.header.wavInMp3;
    const auto changed =
        ChangeStoredAudio(session.host, session.machine, SoundConverterOf(session), files, toMp3);
    if (changed)
        return true;
    const bool isRefused = changed.Error().code == ErrorCode::Refused;
    const auto tell = [&](const Failure& failure) {
        // What ended the conversion itself was seen in its window.
        if (failure.code != ErrorCode::Refused && failure.code != ErrorCode::Stopped &&
            failure.code != ErrorCode::NotDone)
            TellFailure(session.host, failure);
    };
    tell(changed.Error());
    if (!session.host.AskYesNo(GetMsg(Msg::AskErrorLevelAudio, {name + std::string{lineBreak}})))
        return false;
    // What can be converted is, and the rest stays as it is.
    if (isRefused)
        if (const auto rest =
                ChangeStoredAudio(session.host, session.machine, SoundConverterOf(session), files,
                                  toMp3, UnfitSounds::Stay);
            !rest)
            tell(rest.Error());
    return true;
}

} // namespace kestrova
