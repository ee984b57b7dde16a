#include "audio/ms_adpcm_writer.h"

#include "audio/ms_adpcm_coefficients.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace kestrova
{

namespace
{

constexpr int largestFirstStep = 32767;

// Four trials run side by side in one vector; eight make the first round: the seven predictors,
// each with a step measured at the block's beginning, and once more the predictor of the block
// before with the step it ended with.
constexpr std::size_t trials = 8;
constexpr std::size_t width = 4;
using Ints [[gnu::vector_size(16)]] = std::int32_t;
using Floats [[gnu::vector_size(16)]] = float;

struct Trials {
    Floats coefficient1{}; ///< a quarter, so that products with samples are exact
    Floats coefficient2{};
    Floats newer{};
    Floats older{};
    Ints step{};
    Floats error{}; ///< sum of squares
};

/// Codes one sample in four trials; the same arithmetic as every decoder's.
inline Ints CodeSample(Trials& run, float sample)
{
    const Floats weighted = run.newer * run.coefficient1 + run.older * run.coefficient2;
    const Floats guess =
        __builtin_convertvector(__builtin_convertvector(weighted, Ints) >> 6, Floats);
    const Floats step = __builtin_convertvector(run.step, Floats);
    Floats place = (sample - guess) / step + 8.5F;
    place = place < 0.0F ? Floats{} : place;
    place = place > 15.5F ? Floats{} + 15.5F : place;
    const Ints code = __builtin_convertvector(place, Ints) - 8;

    Floats made = guess + __builtin_convertvector(code, Floats) * step;
    made = made < -32768.0F ? Floats{} - 32768.0F : made;
    made = made > 32767.0F ? Floats{} + 32767.0F : made;
    run.older = run.newer;
    run.newer = made;
    run.error += (sample - made) * (sample - made);

    // 230 up to size 3, then 307, 409, 512, 614 and 768 for size 8, in 256ths.
    const Ints size = code < 0 ? -code : code;
    const Ints factor = 230 + ((size > 3) & 77) + ((size > 4) & 102) + ((size > 5) & 103) +
                        ((size > 6) & 102) + ((size > 7) & 154);
    const Ints next = (run.step * factor) >> 8;
    run.step = next < msAdpcmSmallestStep ? Ints{} + msAdpcmSmallestStep : next;
    return code;
}

/// About the step at which the sizes of the codes stay level: the mean error of the first guesses
/// over two and a half.
int FirstStep(std::span<const std::int16_t> samples, const std::array<int, 2>& coefficient)
{
    const std::size_t end = std::min<std::size_t>(samples.size(), 18);
    double sum = 0;
    for (std::size_t i = 2; i < end; ++i)
        sum += std::abs(samples[i] -
                        (samples[i - 1] * coefficient[0] + samples[i - 2] * coefficient[1]) / 256);
    const double mean = end > 2 ? sum / static_cast<double>(end - 2) : 0;
    return std::clamp(static_cast<int>(mean / 2.5), msAdpcmSmallestStep, largestFirstStep);
}

void PutNumber(std::string& bytes, std::size_t number, int size)
{
    for (int i = 0; i < size; ++i)
        bytes += static_cast<char>((number >> (8 * i)) & 0xFF);
}

void PutSample(std::string& bytes, int number)
{
    PutNumber(bytes, static_cast<std::uint16_t>(number), 2);
}

/// By samples a second over all channels, as players expect it.
std::size_t BlockSizeFor(int channels, int rate)
{
    const std::int64_t flow = std::int64_t{channels} * rate;
    return flow < 12000 ? 256 : flow < 23000 ? 512 : flow < 44000 ? 1024 : 2048;
}

std::string HeaderBytes(std::size_t channels, std::size_t rate, std::size_t blockSize,
                        std::size_t blockSamples, std::size_t frames, std::size_t dataSize)
{
    std::string bytes = "RIFF";
    PutNumber(bytes, 82 + dataSize, 4);
    bytes += "WAVEfmt ";
    PutNumber(bytes, 50, 4);
    PutNumber(bytes, 2, 2);
    PutNumber(bytes, channels, 2);
    PutNumber(bytes, rate, 4);
    PutNumber(bytes, rate * blockSize / blockSamples, 4);
    PutNumber(bytes, blockSize, 2);
    PutNumber(bytes, 4, 2);
    PutNumber(bytes, 32, 2);
    PutNumber(bytes, blockSamples, 2);
    PutNumber(bytes, msAdpcmPredictors, 2);
    for (const auto& pair : msAdpcmCoefficients)
        for (const int coefficient : pair)
            PutSample(bytes, coefficient);
    bytes += "fact";
    PutNumber(bytes, 4, 4);
    PutNumber(bytes, frames, 4);
    bytes += "data";
    PutNumber(bytes, dataSize, 4);
    return bytes;
}

/// A predictor and the step to begin with.
struct Beginning {
    std::size_t predictor = 0;
    int step = msAdpcmSmallestStep;
};

/// Several beginnings tried on one block, side by side.
template <std::size_t count> class Round
{
public:
    Round(std::span<const std::int16_t> samples, const std::array<Beginning, count>& beginnings)
        : samples_(samples)
    {
        for (std::size_t trial = 0; trial < count; ++trial) {
            const std::array<int, 2>& pair = msAdpcmCoefficients[beginnings[trial].predictor];
            Trials& run = runs_[trial / width];
            run.coefficient1[trial % width] = static_cast<float>(pair[0]) / 4;
            run.coefficient2[trial % width] = static_cast<float>(pair[1]) / 4;
            run.older[trial % width] = samples[0];
            run.newer[trial % width] = samples[1];
            run.step[trial % width] = beginnings[trial].step;
        }
    }

    /// The trial with the smallest error over the first `heard` samples, and that error.
    std::size_t Best(std::size_t heard, float& error)
    {
        codes_.resize(samples_.size());
        Code(2, heard);
        std::size_t best = 0;
        for (std::size_t trial = 1; trial < count; ++trial)
            if (ErrorOf(trial) < ErrorOf(best))
                best = trial;
        error = ErrorOf(best);
        Code(heard, samples_.size());
        return best;
    }
    void TakeCodes(std::size_t trial, std::vector<std::uint8_t>& codes) const
    {
        codes.resize(samples_.size() - 2);
        for (std::size_t i = 2; i < samples_.size(); ++i)
            codes[i - 2] = static_cast<std::uint8_t>(codes_[i][trial / width][trial % width] & 15);
    }
    [[nodiscard]] int LastStep(std::size_t trial) const
    {
        return runs_[trial / width].step[trial % width];
    }

private:
    [[nodiscard]] float ErrorOf(std::size_t trial) const
    {
        return runs_[trial / width].error[trial % width];
    }
    void Code(std::size_t from, std::size_t to)
    {
        for (std::size_t i = from; i < to; ++i)
            for (std::size_t run = 0; run < runs_.size(); ++run)
                codes_[i][run] = CodeSample(runs_[run], samples_[i]);
    }

    std::span<const std::int16_t> samples_;
    std::array<Trials, count / width> runs_;
    static thread_local std::vector<std::array<Ints, count / width>> codes_;
};

template <std::size_t count>
thread_local std::vector<std::array<Ints, count / width>> Round<count>::codes_;

} // namespace

/// Only the first `heard` samples count for the choice: the jump to the silence that fills the last
/// block would otherwise decide it.
void MsAdpcmEncoder::EncodeChannel(std::span<const std::int16_t> samples, std::size_t heard,
                                   Carry& carry, ChannelBlock& block)
{
    heard = std::max<std::size_t>(heard, 2);
    std::array<Beginning, trials> beginnings;
    for (std::size_t trial = 0; trial < msAdpcmPredictors; ++trial)
        beginnings[trial] = {trial, FirstStep(samples, msAdpcmCoefficients[trial])};
    beginnings[msAdpcmPredictors] = {carry.predictor, carry.step};
    Round<trials> first{samples, beginnings};
    float error = 0;
    const std::size_t best = first.Best(heard, error);
    Beginning chosen = beginnings[best];

    // The measured step is a guess, so others about it have their turn with the best predictor.
    std::array<Beginning, width> nearby;
    for (std::size_t trial = 0; trial < width; ++trial) {
        constexpr std::array<int, width> quarters = {1, 2, 6, 12};
        nearby[trial] = {chosen.predictor, std::clamp(chosen.step * quarters[trial] / 4,
                                                      msAdpcmSmallestStep, largestFirstStep)};
    }
    Round<width> second{samples, nearby};
    float otherError = 0;
    const std::size_t other = second.Best(heard, otherError);
    if (otherError < error) {
        chosen = nearby[other];
        second.TakeCodes(other, block.codes);
        carry.step = second.LastStep(other);
    } else {
        first.TakeCodes(best, block.codes);
        carry.step = first.LastStep(best);
    }
    block.predictor = carry.predictor = chosen.predictor;
    block.firstStep = chosen.step;
    carry.step = std::min(carry.step, largestFirstStep);
}

MsAdpcmEncoder::MsAdpcmEncoder(int channels, int rate)
    : channels_(static_cast<std::size_t>(channels)), rate_(static_cast<std::size_t>(rate)),
      blockSize_(BlockSizeFor(channels, rate)),
      blockSamples_((blockSize_ - 7 * channels_) * 2 / channels_ + 2)
{
}

std::uint64_t MsAdpcmEncoder::WaveSize(std::uint64_t frames) const
{
    constexpr std::uint64_t headerSize = 90;
    return headerSize + (frames + blockSamples_ - 1) / blockSamples_ * blockSize_;
}

std::string MsAdpcmEncoder::Header(std::uint64_t frames) const
{
    const std::uint64_t blocks = (frames + blockSamples_ - 1) / blockSamples_;
    return HeaderBytes(channels_, rate_, blockSize_, blockSamples_, frames, blocks * blockSize_);
}

void MsAdpcmEncoder::PutBlock(std::span<const std::int16_t> interleaved, std::string& bytes)
{
    const std::size_t count = interleaved.size() / channels_;
    for (std::size_t channel = 0; channel < channels_; ++channel) {
        samples_[channel].assign(blockSamples_, 0);
        for (std::size_t i = 0; i < count; ++i)
            samples_[channel][i] = interleaved[i * channels_ + channel];
        EncodeChannel(samples_[channel], count, carries_[channel], parts_[channel]);
    }
    const auto forEachChannel = [&](const auto& put) {
        for (std::size_t channel = 0; channel < channels_; ++channel)
            put(channel);
    };
    forEachChannel([&](std::size_t c) { PutNumber(bytes, parts_[c].predictor, 1); });
    forEachChannel([&](std::size_t c) { PutSample(bytes, parts_[c].firstStep); });
    forEachChannel([&](std::size_t c) { PutSample(bytes, samples_[c][1]); });
    forEachChannel([&](std::size_t c) { PutSample(bytes, samples_[c][0]); });
    const auto& left = parts_[0].codes;
    const auto& right = parts_[channels_ - 1].codes;
    if (channels_ == 2)
        for (std::size_t i = 0; i < left.size(); ++i)
            bytes += static_cast<char>(left[i] << 4 | right[i]);
    else
        for (std::size_t i = 0; i + 1 < left.size(); i += 2)
            bytes += static_cast<char>(left[i] << 4 | left[i + 1]);
}

void MsAdpcmEncoder::Encode(std::span<const std::int16_t> interleaved, std::string& bytes)
{
    const std::size_t block = blockSamples_ * channels_;
    if (!waiting_.empty()) {
        const std::size_t taken = std::min(interleaved.size(), block - waiting_.size());
        waiting_.insert(waiting_.end(), interleaved.begin(),
                        interleaved.begin() + static_cast<std::ptrdiff_t>(taken));
        interleaved = interleaved.subspan(taken);
        if (waiting_.size() < block)
            return;
        PutBlock(waiting_, bytes);
        waiting_.clear();
    }
    for (; interleaved.size() >= block; interleaved = interleaved.subspan(block))
        PutBlock(interleaved.first(block), bytes);
    waiting_.assign(interleaved.begin(), interleaved.end());
}

void MsAdpcmEncoder::Finish(std::string& bytes)
{
    if (waiting_.size() >= channels_)
        PutBlock(std::span<const std::int16_t>(waiting_), bytes);
    waiting_.clear();
}

std::string EncodeMsAdpcmWave(std::span<const std::int16_t> interleaved, int channels, int rate)
{
    MsAdpcmEncoder encoder{channels, rate};
    const std::size_t frames = interleaved.size() / static_cast<std::size_t>(channels);
    std::string bytes = encoder.Header(frames);
    bytes.reserve(static_cast<std::size_t>(encoder.WaveSize(frames)));
    encoder.Encode(interleaved.first(frames * static_cast<std::size_t>(channels)), bytes);
    encoder.Finish(bytes);
    return bytes;
}

} // namespace kestrova
