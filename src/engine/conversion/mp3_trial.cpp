#include "conversion/mp3_trial.h"

#include "conversion/audio_batch.h"
#include "formats/trle_folder.h"
#include "words/conversion.h"

namespace kestrova
{

Status TestMp3Sound(Host& host, Machine& machine, const Folders& folders,
                    const SoundConverter& converter)
{
    Path start;
    if (const Path folder = folders.trle; !folder.empty())
        start = ResolvePath(InFolder(folder, OnDisk::DirAudio));
    const auto wave =
        host.ChooseOpenFile(GetMsg(Msg::ChooseTestWave), GetMsg(Msg::WaveFilesFilter), start);
    if (!wave)
        return MakeFailure(ErrorCode::Stopped, {});
    AudioBatch batch{host, converter, {*wave}, folders.program, AudioKind::Mp3};
    if (const auto done = batch.Run(); !done)
        return ConversionFailed(Msg::FailedConversion, done.Error());
    if (batch.Converted().empty())
        return MakeFailure(ErrorCode::Stopped, TextOf(*wave)); // the person passed it over
    const Path& result = batch.Converted().front().result;
    return Saying(GetMsg(Msg::CannotPlaySound, {TextOf(result.filename())}),
                  machine.Open(result.native(), result.parent_path()));
}

} // namespace kestrova
