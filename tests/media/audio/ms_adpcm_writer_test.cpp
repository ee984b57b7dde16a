#include "audio/ms_adpcm_writer.h"
#include "audio/wave_reader.h"
#include "sandbox/sandbox.h"

#include <array>
#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <numbers>
#include <random>
#include <vector>

namespace kestrova
{
namespace
{

int U16(std::string_view bytes, std::size_t at)
{
    return static_cast<std::uint8_t>(bytes[at]) | static_cast<std::uint8_t>(bytes[at + 1]) << 8;
}
int I16(std::string_view bytes, std::size_t at)
{
    return static_cast<std::int16_t>(U16(bytes, at));
}
int I32(std::string_view bytes, std::size_t at)
{
    return U16(bytes, at) | U16(bytes, at + 2) << 16;
}

struct Wave {
    int channels = 0;
    std::vector<int> samples; ///< interleaved, whole blocks
};

/// Reads the coefficients from the wave itself, as a player does.
Wave Decode(std::string_view bytes)
{
    constexpr std::array<int, 16> factors = {230, 230, 230, 230, 307, 409, 512, 614,
                                             768, 614, 512, 409, 307, 230, 230, 230};
    Wave wave{I16(bytes, 22), {}};
    const auto channels = static_cast<std::size_t>(wave.channels);
    const auto blockSize = static_cast<std::size_t>(U16(bytes, 32));
    for (std::size_t block = 90; block < bytes.size(); block += blockSize) {
        std::array<std::array<int, 3>, 2> state{}; // step, newer, older
        std::array<std::size_t, 2> predictor{};
        for (std::size_t c = 0; c < channels; ++c) {
            predictor[c] = static_cast<std::uint8_t>(bytes[block + c]);
            for (std::size_t i = 0; i < 3; ++i)
                state[c][i] = I16(bytes, block + channels + 2 * (i * channels + c));
        }
        for (std::size_t i = 2; i > 0; --i)
            for (std::size_t c = 0; c < channels; ++c)
                wave.samples.push_back(state[c][i]);
        for (std::size_t i = 0; i < (blockSize - 7 * channels) * 2; ++i) {
            const std::size_t c = i % channels;
            auto& [step, newer, older] = state[c];
            const int byte = static_cast<std::uint8_t>(bytes[block + 7 * channels + i / 2]);
            const int nibble = i % 2 == 0 ? byte >> 4 : byte & 15;
            const std::size_t pair = 42 + 4 * predictor[c];
            const int guess = (newer * I16(bytes, pair) + older * I16(bytes, pair + 2)) >> 8;
            older = newer;
            newer = std::clamp(guess + (nibble > 7 ? nibble - 16 : nibble) * step, -32768, 32767);
            step = std::max(16, step * factors[static_cast<std::size_t>(nibble)] >> 8);
            wave.samples.push_back(newer);
        }
    }
    return wave;
}

double SignalToNoise(const std::vector<std::int16_t>& samples, const Wave& wave)
{
    double signal = 0;
    double noise = 0;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        signal += std::pow(samples[i], 2);
        noise += std::pow(samples[i] - wave.samples[i], 2);
    }
    return 10 * std::log10(signal / std::max(noise, 1.0));
}

/// `frames` of what `shape(seconds, channel)` gives, from -1 to 1.
template <class Shape>
std::vector<std::int16_t> Sound(std::size_t frames, std::size_t channels, int rate, Shape shape)
{
    std::vector<std::int16_t> samples;
    for (std::size_t i = 0; i < frames * channels; ++i)
        samples.push_back(static_cast<std::int16_t>(
            std::lround(32000 * shape(static_cast<double>(i / channels) / rate, i % channels))));
    return samples;
}

double Sine(double seconds, double pitch)
{
    return std::sin(2 * std::numbers::pi * pitch * seconds);
}

TEST(MsAdpcm, TheHeaderIsTheOneThatTheGameExpects)
{
    const auto samples = Sound(5000, 2, 44100, [](double t, std::size_t) { return Sine(t, 300); });
    const std::string bytes = EncodeMsAdpcmWave(samples, 2, 44100);
    EXPECT_EQ(bytes.substr(0, 4) + bytes.substr(8, 8), "RIFFWAVEfmt ");
    EXPECT_EQ(I32(bytes, 4) + 8, static_cast<int>(bytes.size()));
    const std::array fields = {50, 2, 2, 44100, 44359, 2048, 4, 32, 2036, 7, 5000, 3 * 2048};
    const std::array found = {I32(bytes, 16), U16(bytes, 20), U16(bytes, 22), I32(bytes, 24),
                              I32(bytes, 28), U16(bytes, 32), U16(bytes, 34), U16(bytes, 36),
                              U16(bytes, 38), U16(bytes, 40), I32(bytes, 78), I32(bytes, 86)};
    EXPECT_EQ(found, fields);
    const std::array pairs = {256, 0, 512, -256, 0, 0, 192, 64, 240, 0, 460, -208, 392, -232};
    for (std::size_t i = 0; i < pairs.size(); ++i)
        EXPECT_EQ(I16(bytes, 42 + 2 * i), pairs[i]);
    EXPECT_EQ(bytes.substr(70, 4), "fact");
    EXPECT_EQ(bytes.substr(82, 4), "data");
    EXPECT_EQ(bytes.size(), 90U + 3 * 2048);
}

TEST(MsAdpcm, SoundsCloseToTheSourceThroughAPlainDecoder)
{
    constexpr std::size_t frames = 44100 * 2 + 77;
    std::mt19937 dice{5};
    std::uniform_real_distribution<double> any{-1, 1};
    // White noise through three slopes falls by 3 dB an octave.
    std::array<double, 3> slow{};
    const auto pink = [&](double, std::size_t) {
        const double white = any(dice);
        slow[0] = 0.99765 * slow[0] + white * 0.0990460;
        slow[1] = 0.96300 * slow[1] + white * 0.2965164;
        slow[2] = 0.57000 * slow[2] + white * 1.0526913;
        return std::clamp((slow[0] + slow[1] + slow[2] + white * 0.1848) / 8, -1.0, 1.0);
    };
    const auto sine = [](double t, std::size_t c) { return 0.8 * Sine(t, c == 0 ? 440 : 523); };
    const auto notes = [](double t, std::size_t c) {
        const double since = std::fmod(t, 0.4);
        const double pitch = 220 * std::pow(2.0, std::floor(t / 0.4) / 4);
        const double loudness = std::min(since * 200, 1.0) * std::exp(-since * 5);
        return loudness * (0.5 * Sine(t, pitch) + 0.3 * Sine(t, c == 0 ? 2 * pitch : 3 * pitch));
    };
    const auto check = [&](const char* name, const auto& shape, double atLeast) {
        const auto samples = Sound(frames, 2, 44100, shape);
        const Wave wave = Decode(EncodeMsAdpcmWave(samples, 2, 44100));
        ASSERT_GE(wave.samples.size(), samples.size());
        const double found = SignalToNoise(samples, wave);
        RecordProperty(name, std::to_string(found));
        EXPECT_GT(found, atLeast) << name;
        // What fills the last block stays as quiet as the sound before it.
        for (std::size_t i = samples.size() + 64; i < wave.samples.size(); ++i)
            ASSERT_LT(std::abs(wave.samples[i]), 400) << name << " behind the end";
    };
    check("sine", sine, 60);
    check("notes", notes, 50);
    check("pink", pink, 20);
}

TEST(MsAdpcm, OurDecoderIsThePlainOne)
{
    testing::Sandbox box;
    std::mt19937 dice{8};
    std::uniform_int_distribution<int> any{-30000, 30000};
    for (const auto& [channels, rate, frames] :
         {std::array{2, 44100, 700'000}, {1, 22050, 5001}, {1, 8000, 3}, {2, 11025, 507}}) {
        std::vector<std::int16_t> samples;
        for (int i = 0; i < frames * channels; ++i)
            samples.push_back(static_cast<std::int16_t>(any(dice) * (i % 5000) / 5000));
        const std::string bytes = EncodeMsAdpcmWave(samples, channels, rate);
        box.Write("a.wav", bytes);
        auto reader = WaveReader::Open(box / "a.wav");
        ASSERT_TRUE(reader);
        EXPECT_EQ(reader->Frames(), static_cast<std::uint64_t>(frames));
        std::vector<std::int16_t> read(samples.size() + 2);
        std::size_t done = 0;
        // In pieces that fit no block.
        while (const std::size_t got =
                   reader->Read(std::span(read).subspan(done).first(std::min<std::size_t>(
                       read.size() - done, static_cast<std::size_t>(channels) * 1777))))
            done += got * static_cast<std::size_t>(channels);
        EXPECT_EQ(done, samples.size());
        const Wave plain = Decode(bytes);
        for (std::size_t i = 0; i < samples.size(); ++i)
            ASSERT_EQ(read[i], plain.samples[i]) << channels << " " << rate << " at " << i;
    }
}

TEST(MsAdpcm, EdgesOfLengthLoudnessAndForm)
{
    EXPECT_EQ(EncodeMsAdpcmWave({}, 2, 44100).size(), 90U);
    const std::vector<std::int16_t> one = {1000, -1000};
    const Wave tiny = Decode(EncodeMsAdpcmWave(one, 2, 44100));
    ASSERT_EQ(tiny.samples.size(), 2036U * 2);
    EXPECT_EQ(tiny.samples[0], 1000);
    EXPECT_EQ(tiny.samples[1], -1000);
    // The loudest there is: full swings, at half the highest pitch and as single steps.
    for (const int period : {2, 4, 50, 3000}) {
        std::vector<std::int16_t> loud;
        for (int i = 0; i < 9000; ++i)
            loud.push_back(i % period < period / 2 ? INT16_MAX : INT16_MIN);
        EXPECT_GT(SignalToNoise(loud, Decode(EncodeMsAdpcmWave(loud, 1, 44100))), 12) << period;
    }
    // The block's size by rate and channels.
    for (const auto& [channels, rate, size] :
         {std::array{2, 22050, 2048}, {1, 22050, 512}, {2, 11025, 512}, {1, 8000, 256}}) {
        const auto samples = Sound(3000, static_cast<std::size_t>(channels), rate,
                                   [](double t, std::size_t) { return 0.7 * Sine(t, 200); });
        const std::string bytes = EncodeMsAdpcmWave(samples, channels, rate);
        EXPECT_EQ(U16(bytes, 32), size);
        EXPECT_GT(SignalToNoise(samples, Decode(bytes)), 45) << rate;
    }
}

} // namespace
} // namespace kestrova
