#include "audio/ms_adpcm_reader.h"

#include "audio/ms_adpcm_coefficients.h"
#include "core/parallel.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace kestrova
{

namespace
{

constexpr std::size_t blocksAtOnce = 256;
constexpr std::size_t blocksOfAJob = 64;
constexpr std::array<int, 16> factors = {230, 230, 230, 230, 307, 409, 512, 614,
                                         768, 614, 512, 409, 307, 230, 230, 230};
/// No sound needs it; damaged blocks would multiply their way beyond all numbers.
constexpr int largestStep = 1 << 20;

struct Channel {
    int newer = 0;
    int older = 0;
    int step = msAdpcmSmallestStep;
    int first = 0;
    int second = 0;

    int Next(unsigned code)
    {
        const int guess = (newer * first + older * second) >> 8;
        const int size = static_cast<int>(code ^ 8U) - 8;
        older = newer;
        newer = std::clamp(guess + size * step, -32768, 32767);
        step = std::clamp(step * factors[code] >> 8, msAdpcmSmallestStep, largestStep);
        return newer;
    }
};

template <class T> T NumberAt(const char* bytes)
{
    T value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

/// `block` is whole.
template <std::size_t channels>
void Decode(const char* block, std::size_t codes, std::int16_t* samples, std::size_t wanted)
{
    std::array<Channel, channels> state;
    for (std::size_t c = 0; c < channels; ++c) {
        const auto predictor = static_cast<unsigned char>(block[c]) % msAdpcmPredictors;
        state[c].first = msAdpcmCoefficients[predictor][0];
        state[c].second = msAdpcmCoefficients[predictor][1];
        const char* numbers = block + channels + 2 * c;
        state[c].step = NumberAt<std::int16_t>(numbers);
        state[c].newer = NumberAt<std::int16_t>(numbers + 2 * channels);
        state[c].older = NumberAt<std::int16_t>(numbers + 4 * channels);
    }
    std::array<std::int16_t, 2 * channels> head{};
    for (std::size_t c = 0; c < channels; ++c) {
        head[c] = static_cast<std::int16_t>(state[c].older);
        head[channels + c] = static_cast<std::int16_t>(state[c].newer);
    }
    std::copy_n(head.begin(), std::min(wanted, head.size()), samples);
    if (wanted <= head.size())
        return;
    // Two codes a byte; of the last one a half may be wanted.
    const std::size_t left = std::min(2 * codes, wanted - head.size());
    const char* code = block + 7 * channels;
    std::int16_t* out = samples + head.size();
    for (std::size_t i = 0; i < left / 2; ++i) {
        const auto both = static_cast<unsigned char>(code[i]);
        *out++ = static_cast<std::int16_t>(state[0].Next(both >> 4));
        *out++ = static_cast<std::int16_t>(state[channels - 1].Next(both & 15U));
    }
    if (left % 2 != 0)
        *out = static_cast<std::int16_t>(
            state[0].Next(static_cast<unsigned char>(code[left / 2]) >> 4));
}

} // namespace

void DecodeMsAdpcmBlock(const MsAdpcmForm& form, std::span<const char> block,
                        std::span<std::int16_t> samples)
{
    std::string whole;
    if (block.size() < form.blockSize) {
        whole.assign(block.begin(), block.end());
        whole.resize(form.blockSize);
        block = whole;
    }
    const std::size_t codes = form.blockSize - 7 * form.channels;
    if (form.channels == 2)
        Decode<2>(block.data(), codes, samples.data(), samples.size());
    else
        Decode<1>(block.data(), codes, samples.data(), samples.size());
}

std::optional<MsAdpcmReader> MsAdpcmReader::Open(const Path& file, const WaveFacts& facts)
{
    MsAdpcmReader reader;
    reader.form_ = {static_cast<std::size_t>(facts.channels),
                    static_cast<std::size_t>(facts.blockAlign)};
    const auto samples = static_cast<std::size_t>(facts.samplesPerBlock);
    if (facts.formatTag != waveTagMsAdpcm || facts.channels > 2 || facts.bits != 4 ||
        reader.form_.blockSize <= 7 * reader.form_.channels ||
        samples != reader.form_.BlockSamples() || !facts.usualPredictors ||
        platform::File::OpenForRead(file, reader.file_))
        return {};
    reader.place_ = facts.dataStart;
    reader.end_ = facts.dataStart + facts.dataSize;
    return reader;
}

bool MsAdpcmReader::DecodeMore()
{
    const std::uint64_t left = end_ - place_;
    bytes_.resize(
        static_cast<std::size_t>(std::min<std::uint64_t>(left, blocksAtOnce * form_.blockSize)));
    std::size_t got = 0;
    if (file_.ReadAt(place_, std::as_writable_bytes(std::span(bytes_)), got) || got == 0)
        return false;
    place_ += got;
    const std::size_t blocks = (got + form_.blockSize - 1) / form_.blockSize;
    const std::size_t blockSamples = form_.BlockSamples() * form_.channels;
    samples_.resize(blocks * blockSamples);
    taken_ = 0;
    RunOnAllCores((blocks + blocksOfAJob - 1) / blocksOfAJob, [&](std::size_t job) {
        const std::size_t end = std::min(blocks, (job + 1) * blocksOfAJob);
        for (std::size_t block = job * blocksOfAJob; block < end; ++block) {
            const std::size_t from = block * form_.blockSize;
            DecodeMsAdpcmBlock(
                form_, std::span(bytes_).subspan(from, std::min(form_.blockSize, got - from)),
                std::span(samples_).subspan(block * blockSamples, blockSamples));
        }
    });
    return true;
}

std::size_t MsAdpcmReader::Read(std::span<std::int16_t> into)
{
    const std::size_t wanted = into.size() / form_.channels * form_.channels;
    std::size_t done = 0;
    while (done < wanted && (taken_ < samples_.size() || (place_ < end_ && DecodeMore()))) {
        const std::size_t piece = std::min(wanted - done, samples_.size() - taken_);
        std::memcpy(into.data() + done, samples_.data() + taken_, piece * sizeof(std::int16_t));
        taken_ += piece;
        done += piece;
    }
    return done / form_.channels;
}

} // namespace kestrova
