#include "audio/wave_header.h"

#include "core/record_io.h"
#include "words/audio.h"

#include <algorithm>

namespace kestrova
{

namespace
{

constexpr std::size_t waveHeadSize = 36;
constexpr int formatPcm = 1;

bool Has(const WavHeader& header, int rate, int channels, int bits)
{
    return header.sampleRate == rate && header.channels == channels && header.bitsPerSample == bits;
}

AudioKind KindOf(const WavHeader& header)
{
    if (Has(header, 44100, 2, 4))
        return AudioKind::Adpcm;
    if (Has(header, 22050, 1, 16))
        return AudioKind::Mono;
    if (Has(header, 44100, 2, 16))
        return AudioKind::Standard;
    return header.formatTag == formatPcm ? AudioKind::OtherPcm : AudioKind::Unknown;
}

std::string Describe(const WavHeader& header)
{
    const Message word = header.bitsPerSample == 4       ? Msg::WaveAdpcm
                         : header.formatTag == formatPcm ? Msg::WavePcm
                                                         : Msg::WaveUnknown;
    const std::string channels = header.channels == 1   ? GetMsg(Msg::WaveMono)
                                 : header.channels == 2 ? GetMsg(Msg::WaveStereo)
                                                        : " ";
    return GetMsg(Msg::WaveDescription, {Shown(word), std::to_string(header.sampleRate), channels,
                                         std::to_string(header.bitsPerSample)});
}

int ModeFor(AudioKind kind, AudioKind target)
{
    struct Way {
        AudioKind from;
        AudioKind to;
        int mode;
    };
    static constexpr Way ways[] = {
        {AudioKind::Standard, AudioKind::Adpcm, toAdpcm},
        {AudioKind::Standard, AudioKind::Mono, toMono},
        {AudioKind::Adpcm, AudioKind::Standard, adpcmToStandard},
        {AudioKind::Mono, AudioKind::Standard, pcmToStandard},
        {AudioKind::OtherPcm, AudioKind::Standard, pcmToStandard},
        {AudioKind::OtherPcm, AudioKind::Mono, toMono},
    };
    if (kind == AudioKind::Unknown)
        return -1;
    if (kind == target)
        return 0;
    if (target == AudioKind::Mp3)
        return encodeStep;
    for (const Way& way : ways)
        if (way.from == kind && way.to == target)
            return way.mode;
    return -1;
}

} // namespace

WavHeader ParseWavHeader(std::string_view bytes)
{
    std::string start{bytes.substr(0, waveHeadSize)};
    start.resize(waveHeadSize);
    RecordReader reader{start};
    WavHeader header;
    reader.Text(header.chunkId, 4);
    reader.I32(header.chunkSize);
    reader.Text(header.formatId, 8);
    reader.I32(header.formatSize);
    reader.I16(header.formatTag);
    reader.I16(header.channels);
    reader.I32(header.sampleRate);
    reader.I32(header.byteRate);
    reader.I16(header.blockAlign);
    reader.I16(header.bitsPerSample);
    return header;
}

bool ReadWavHeader(const Path& file, WavHeader& header)
{
    platform::File handle;
    std::string start(waveHeadSize, '\0');
    std::size_t got = 0;
    if (platform::File::OpenForRead(ResolvePath(file), handle) ||
        handle.ReadAt(0, std::as_writable_bytes(std::span(start)), got)) {
        header = {};
        return false;
    }
    header = ParseWavHeader(std::string_view{start}.substr(0, got));
    return Has(header, 44100, 2, 16) && header.formatTag == formatPcm;
}

WaveClass ClassifyWav(const WavHeader& header, AudioKind target)
{
    const AudioKind kind = KindOf(header);
    return {ModeFor(kind, target), Describe(header), kind, header};
}

WaveClass ClassifyWav(const Path& file, AudioKind target)
{
    WavHeader header;
    (void)ReadWavHeader(file, header); // a file that cannot be read is of no kind
    return ClassifyWav(header, target);
}

} // namespace kestrova
