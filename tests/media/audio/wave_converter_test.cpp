#include "audio/wave_chunks.h"
#include "audio/wave_converter.h"
#include "audio/wave_reader.h"
#include "sandbox/faults.h"
#include "sandbox/sandbox.h"
#include "sandbox/sound_files.h"

#include <gtest/gtest.h>

namespace kestrova
{
namespace
{

using namespace kestrova::testing;

double SignalToNoise(const std::vector<std::int16_t>& wanted,
                     const std::vector<std::int16_t>& found, std::size_t skip = 0)
{
    double signal = 0;
    double noise = 0;
    for (std::size_t i = skip; i + skip < std::min(wanted.size(), found.size()); ++i) {
        signal += std::pow(wanted[i], 2);
        noise += std::pow(wanted[i] - found[i], 2);
    }
    return 10 * std::log10(signal / std::max(noise, 1.0));
}

Status Converted(Sandbox& box, const std::string& wave, int mode)
{
    box.Write("in.wav", wave);
    return WavConverter(box / "in.wav", box / "out.wav", mode);
}

TEST(WavConverter, EveryFormBecomesTheTargetWithAllItsSamples)
{
    Sandbox box;
    const Shape tone = [](double t, int) { return 0.5 * SineAt(t, 300); };
    const std::size_t seconds = 1;
    for (const SoundForm& form :
         {SoundForm{1, 44100, 16, 1}, SoundForm{2, 44100, 8, 1}, SoundForm{2, 44100, 24, 1},
          SoundForm{2, 44100, 32, 1}, SoundForm{2, 44100, 32, 3}, SoundForm{2, 96000, 24, 1},
          SoundForm{1, 11025, 8, 1}, SoundForm{1, 22050, 16, 1}, SoundForm{5, 48000, 16, 1},
          SoundForm{8, 8000, 16, 1}, SoundForm{2, 44099, 16, 1}}) {
        const auto frames = static_cast<std::size_t>(form.rate) * seconds + 13;
        const std::string name = std::to_string(form.channels) + " " + std::to_string(form.rate) +
                                 " " + std::to_string(form.bits);
        for (const int mode : {pcmToStandard, toMono, toAdpcm}) {
            const auto status = Converted(box, WaveOf(form, frames, tone), mode);
            ASSERT_TRUE(status) << name << status.Error().reason;
            const WaveForm target = FormOfMode(mode);
            const auto expected = (frames * static_cast<std::size_t>(target.rate) +
                                   static_cast<std::size_t>(form.rate) / 2) /
                                  static_cast<std::size_t>(form.rate);
            EXPECT_TRUE(HoldsWave(box / "out.wav", target, expected)) << name << " mode " << mode;
            if (target.adpcm)
                continue;
            const SoundForm wanted{target.channels, target.rate, 16, 1};
            const double clean = SignalToNoise(SamplesOf(WaveOf(wanted, expected, tone)),
                                               SamplesOf(box.Read("out.wav")), 2000);
            EXPECT_GT(clean, form.bits == 8 ? 38 : 75) << name << " mode " << mode;
        }
    }
}

TEST(WavConverter, WholeNumbersStayAsTheyAre)
{
    Sandbox box;
    const std::string mono = ToneWave({1, 44100, 16, 1}, 5000);
    ASSERT_TRUE(Converted(box, mono, pcmToStandard));
    const auto one = SamplesOf(mono);
    const auto two = SamplesOf(box.Read("out.wav"));
    ASSERT_EQ(two.size(), 2 * one.size());
    for (std::size_t i = 0; i < one.size(); ++i)
        ASSERT_TRUE(two[2 * i] == one[i] && two[2 * i + 1] == one[i]) << i;
    EXPECT_EQ(box.Read("out.wav").substr(0, 4) + box.Read("out.wav").substr(8, 8), "RIFFWAVEfmt ");
    WavHeader header;
    EXPECT_TRUE(ReadWavHeader(box / "out.wav", header));
}

TEST(WavConverter, AdpcmComesBackWithItsLengthAndItsSound)
{
    Sandbox box;
    for (const std::size_t frames : {1U, 2035U, 2036U, 2037U, 50'000U}) {
        const std::string wave = ToneWave({}, frames);
        ASSERT_TRUE(Converted(box, wave, toAdpcm));
        ASSERT_TRUE(WavConverter(box / "out.wav", box / "back.wav", adpcmToStandard));
        EXPECT_TRUE(HoldsWave(box / "back.wav", WaveForm{}, frames)) << "no filling of a block";
        if (frames > 1000) {
            EXPECT_GT(SignalToNoise(SamplesOf(wave), SamplesOf(box.Read("back.wav"))), 45);
        }
    }
    EXPECT_TRUE(Converted(box, ToneWave({}, 0), toAdpcm)) << "no sound is a sound too";
}

TEST(WavConverter, ALoudSoundIsTurnedDownAndASilentOneStaysSilent)
{
    Sandbox box;
    // Beyond full loudness, as fractions can be; a square overshoots when it is resampled.
    const auto loud = [](double t, int) { return 1.9 * SineAt(t, 500); };
    ASSERT_TRUE(Converted(box, WaveOf({2, 44100, 32, 3}, 20'000, loud), pcmToStandard));
    const auto whole =
        SamplesOf(WaveOf({2, 44100, 16, 1}, 20'000, [](double t, int) { return SineAt(t, 500); }));
    EXPECT_GT(SignalToNoise(whole, SamplesOf(box.Read("out.wav"))), 60);
    const auto square = [](double t, int) { return SineAt(t, 441) > 0 ? 0.999 : -0.999; };
    ASSERT_TRUE(Converted(box, WaveOf({1, 48000, 16, 1}, 30'000, square), pcmToStandard));
    const auto samples = SamplesOf(box.Read("out.wav"));
    EXPECT_LT(std::count(samples.begin(), samples.end(), INT16_MAX) +
                  std::count(samples.begin(), samples.end(), INT16_MIN),
              5)
        << "tops that are cut off are many";

    ASSERT_TRUE(
        Converted(box, WaveOf({2, 96000, 24, 1}, 9000, [](double, int) { return 0.0; }), toMono));
    const auto silent = SamplesOf(box.Read("out.wav"));
    EXPECT_EQ(std::count(silent.begin(), silent.end(), 0),
              static_cast<std::ptrdiff_t>(silent.size()));
    // The same sound, the same bytes.
    box.Write("a.wav", ToneWave({2, 96000, 24, 1}, 9000));
    ASSERT_TRUE(WavConverter(box / "a.wav", box / "b.wav", toMono));
    ASSERT_TRUE(WavConverter(box / "a.wav", box / "c.wav", toMono));
    EXPECT_EQ(box.Read("b.wav"), box.Read("c.wav"));
}

TEST(WavConverter, WhatIsCutIsConvertedAsFarAsItGoesAndWhatIsNoneIsRefused)
{
    Sandbox box;
    const std::string wave = ToneWave({2, 48000, 16, 1}, 9000);
    for (const std::size_t length : {44U, 45U, 1000U, 20'001U}) {
        ASSERT_TRUE(Converted(box, wave.substr(0, length), pcmToStandard)) << length;
        const auto reader = WaveReader::Open(box / "out.wav");
        ASSERT_TRUE(reader);
        EXPECT_NEAR(static_cast<double>(reader->Frames()),
                    static_cast<double>((length - 44) / 4) * 44100 / 48000, 1);
    }
    ASSERT_TRUE(Converted(box, ToneWave({}, 9000), toAdpcm));
    const std::string adpcm = box.Read("out.wav");
    for (const std::size_t length : {90U, 1000U, 2138U, 5000U})
        EXPECT_TRUE(Converted(box, adpcm.substr(0, length), adpcmToStandard)) << length;

    box.Write("out.wav", "the old one");
    for (const std::string& bad :
         {std::string{}, std::string(5000, '\0'), wave.substr(0, 30), "ID3" + wave,
          Riff(Chunk("fmt ", FormatBlock({2, 44100, 16, 77})) + Chunk("data", "12345678")),
          // Sound that the decoder does not hear, and rates that make hours or nothing of it.
          Riff(Chunk("fmt ", FormatBlock({})) + "data" + Little(0, 4) + wave.substr(44)),
          ToneWave({2, 1, 16, 1}, 9), ToneWave({2, 2'000'000'000, 16, 1}, 9)}) {
        const auto status = Converted(box, bad, pcmToStandard);
        ASSERT_FALSE(status);
        EXPECT_EQ(status.Error().code, ErrorCode::Damaged);
        EXPECT_FALSE(status.Error().reason.empty());
        EXPECT_EQ(box.Read("out.wav"), "the old one");
    }
}

TEST(WavConverter, IsAllOrNothingWhereverTheDiskFailsAndWheneverItIsStopped)
{
    Sandbox box;
    box.Write("in.wav", ToneWave({1, 22050, 16, 1}, 100'000));
    for (int call = 1;; ++call) {
        ASSERT_LT(call, 1000);
        box.Write("out.wav", "old");
        const auto run = WithFaultAt(
            call,
            [&] {
                return static_cast<bool>(
                    WavConverter(box / "in.wav", box / "out.wav", pcmToStandard));
            },
            std::errc::no_space_on_device);
        if (!run.reached)
            break;
        EXPECT_EQ(box.Read("out.wav") != "old", run.answer) << run.call;
        EXPECT_FALSE(run.answer) << run.call;
    }
    box.Write("out.wav", "old");
    int steps = 0;
    const auto status = WavConverter(box / "in.wav", box / "out.wav", pcmToStandard,
                                     [&](std::uint64_t, std::uint64_t) { return ++steps < 2; });
    EXPECT_EQ(status.Error().code, ErrorCode::Stopped);
    EXPECT_EQ(box.Read("out.wav"), "old");
    EXPECT_EQ(box.Snapshot("").size(), 2U);
}

} // namespace
} // namespace kestrova
