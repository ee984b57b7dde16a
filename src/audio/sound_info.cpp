#include "audio/sound_info.h"

#include "audio/mpeg_frames.h"
#include "audio/wave_chunks.h"
#include "audio/wave_header.h"
#include "catalogue/message.h"

#include <cmath>

namespace kestrova
{

Result<SoundInfo> LookAtSound(const Path& file)
{
    SoundInfo info;
    info.bytes = FileSize(file);
    if (const auto facts = WalkWave(file)) {
        info.form = ClassifyWav(file, AudioKind::Standard).description;
        info.rate = facts->rate;
        info.channels = facts->channels;
        info.bits = facts->bits;
        info.frames = facts->frames;
    } else {
        const auto bytes = ReadWholeFile(ResolvePath(file));
        if (!bytes)
            return bytes.Error();
        const MpegFacts sound = ScanMpeg(*bytes);
        if (sound.frames == 0)
            return MakeFailure(ErrorCode::Damaged, TextOf(file));
        info.form = GetMsg(Msg::SoundOfMpeg, {std::to_string(sound.first.layer)});
        info.rate = static_cast<std::uint32_t>(sound.first.rate);
        info.channels = sound.first.channels;
        info.frames = sound.samples;
        info.kbits =
            static_cast<int>(std::lround(static_cast<double>(sound.audioBytes) * 8 * info.rate /
                                         (1000.0 * static_cast<double>(sound.samples))));
    }
    info.seconds = static_cast<double>(info.frames) / info.rate;
    return info;
}

} // namespace kestrova
