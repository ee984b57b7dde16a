#include "conversion/mp3_trial.h"

#include "conversion/audio_batch.h"
#include "formats/trle_folder.h"
#include "session/telling.h"
#include "words/conversion.h"

namespace kestrova
{

bool TestMp3Sound(Session& session)
{
    Path start;
    if (const Path folder = session.TrleFolder(); !folder.empty())
        start = ResolvePath(InFolder(folder, OnDisk::DirAudio));
    const auto wave = session.host.ChooseOpenFile(GetMsg(Msg::ChooseTestWave),
                                                  GetMsg(Msg::WaveFilesFilter), start);
    if (!wave)
        return false;
    AudioBatch batch{session, {*wave}, session.programFolder, AudioKind::Mp3};
    if (!batch.Run()) {
        session.host.Tell(Tone::Error, GetMsg(Msg::FailedConversion) + batch.StatusText());
        return false;
    }
    if (batch.Converted().empty())
        return false; // the person knows, and passed it over
    const Path& result = batch.Converted().front().result;
    const auto status = session.machine.Open(result.native(), result.parent_path());
    if (!status)
        TellFailure(session.host, GetMsg(Msg::CannotPlaySound, {TextOf(result.filename())}),
                    status.Error());
    return bool{status};
}

} // namespace kestrova
