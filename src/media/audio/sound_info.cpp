#include "audio/sound_info.h"

#include "audio/mpeg_frames.h"
#include "audio/wave_chunks.h"
#include "audio/wave_header.h"
#include "words/audio.h"

#include <cmath>

namespace kestrova
{

namespace
{

/// As it would be with the format block at the beginning, wherever that stands.
WavHeader HeaderOf(const WaveFacts& facts)
{
    WavHeader header;
    header.formatTag = static_cast<std::int16_t>(facts.formatTag);
    header.channels = static_cast<std::int16_t>(facts.channels);
    header.sampleRate = static_cast<std::int32_t>(facts.rate);
    header.bitsPerSample = static_cast<std::int16_t>(facts.bits);
    return header;
}

} // namespace

Result<SoundInfo> LookAtSound(const Path& file)
{
    SoundInfo info;
    info.bytes = FileSize(file);
    if (const auto facts = WalkWave(file)) {
        if (!CanBeSound(*facts)) {
            Failure failure = MakeFailure(ErrorCode::Damaged, TextOf(file));
            failure.reason = GetMsg(Msg::NoSuchSound,
                                    {std::to_string(facts->rate), std::to_string(facts->channels),
                                     std::to_string(facts->bits)});
            return failure;
        }
        info.form = ClassifyWav(HeaderOf(*facts), AudioKind::Standard).description;
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
