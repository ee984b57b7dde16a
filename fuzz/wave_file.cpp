// Waves: the record at a file's start, and the walk over its chunks.

#include "audio/ms_adpcm_reader.h"
#include "audio/wave_chunks.h"
#include "audio/wave_header.h"

#include "check.h"

#include <cstring>

using namespace kestrova;
using namespace kestrova::fuzz;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes = TextOfInput(data, size);
    const WavHeader header = ParseWavHeader(bytes);
    for (const AudioKind target :
         {AudioKind::Standard, AudioKind::Adpcm, AudioKind::Mono, AudioKind::Mp3}) {
        const WaveClass found = ClassifyWav(header, target);
        Promise(found.mode >= -1 && found.mode <= encodeStep, "a mode is one of the list");
        Promise((found.mode == 0) == (found.kind == target), "only the target needs nothing");
        Promise(!found.description.empty(), "every file has words");
    }
    for (const MsAdpcmForm& form : {MsAdpcmForm{2, 2048}, MsAdpcmForm{1, 256}, MsAdpcmForm{1, 8}}) {
        std::vector<std::int16_t> samples(form.BlockSamples() * form.channels, 7);
        DecodeMsAdpcmBlock(form, bytes, samples);
        std::vector<std::int16_t> fewer(size < samples.size() ? size : samples.size());
        DecodeMsAdpcmBlock(form, bytes, fewer);
        Promise(std::equal(fewer.begin(), fewer.end(), samples.begin()),
                "a block gives the same sound however much of it is asked for");
    }
    const auto facts = WalkWave(
        [&](std::uint64_t place, std::span<char> into) -> std::size_t {
            if (place >= size)
                return 0;
            const std::size_t got = std::min<std::size_t>(into.size(), size - place);
            std::memcpy(into.data(), data + place, got);
            return got;
        },
        size);
    if (!facts)
        return 0;
    Promise(facts->dataStart <= size && facts->dataSize <= size - facts->dataStart,
            "the sound lies in the file");
    Promise(facts->channels > 0 && facts->rate > 0, "a sound has channels and a rate");
    Promise(facts->frames <= (facts->dataSize + 1) * 65536, "samples come out of bytes");
    return 0;
}
