#include "audio/wave_chunks.h"
#include "audio/wave_header.h"
#include "sandbox/sandbox.h"
#include "sandbox/sound_files.h"

#include <cstring>
#include <gtest/gtest.h>

namespace kestrova
{
namespace
{

using namespace kestrova::testing;

Result<WaveFacts> Walk(const std::string& bytes)
{
    return WalkWave(
        [&](std::uint64_t place, std::span<char> into) -> std::size_t {
            if (place >= bytes.size())
                return 0;
            const std::size_t got = std::min<std::size_t>(into.size(), bytes.size() - place);
            std::memcpy(into.data(), bytes.data() + place, got);
            return got;
        },
        bytes.size());
}

TEST(WaveHeader, KindsAndWaysAreAsTheTablesHaveThem)
{
    struct Row {
        SoundForm form;
        const char* words;
        AudioKind kind;
        int modes[4]; ///< to standard, ADPCM, mono, mp3
    };
    const Row rows[] = {
        {{2, 44100, 16, 1}, "PCM 44100Hz stereo 16 bits", AudioKind::Standard, {0, 2, 4, 5}},
        {{2, 44100, 4, 2}, "ADPCM 44100Hz stereo 4 bits", AudioKind::Adpcm, {1, 0, -1, 5}},
        {{1, 22050, 16, 1}, "PCM 22050Hz mono 16 bits", AudioKind::Mono, {3, -1, 0, 5}},
        {{1, 11025, 8, 1}, "PCM 11025Hz mono 8 bits", AudioKind::OtherPcm, {3, -1, 4, 5}},
        {{5, 48000, 16, 1}, "PCM 48000Hz   16 bits", AudioKind::OtherPcm, {3, -1, 4, 5}},
        {{1, 44100, 4, 2}, "ADPCM 44100Hz mono 4 bits", AudioKind::Unknown, {-1, -1, -1, -1}},
        {{2, 44100, 32, 3}, "UNKNOWN 44100Hz stereo 32 bits", AudioKind::Unknown, {-1, -1, -1, -1}},
        // Only rate, channels and bits make this kind, whatever the tag says.
        {{2, 44100, 16, 7}, "UNKNOWN 44100Hz stereo 16 bits", AudioKind::Standard, {0, 2, 4, 5}},
    };
    for (const Row& row : rows) {
        const WavHeader header = ParseWavHeader(Riff(Chunk("fmt ", FormatBlock(row.form))));
        const AudioKind targets[] = {AudioKind::Standard, AudioKind::Adpcm, AudioKind::Mono,
                                     AudioKind::Mp3};
        for (int i = 0; i < 4; ++i) {
            const WaveClass found = ClassifyWav(header, targets[i]);
            EXPECT_EQ(found.mode, row.modes[i]) << row.words << " to " << i;
            EXPECT_EQ(found.kind, row.kind) << row.words;
            EXPECT_EQ(found.description, row.words);
        }
    }
}

TEST(WaveHeader, OnlyTheStandardFormIsStandard)
{
    Sandbox box;
    const auto standard = [&](const std::string& bytes) {
        box.Write("a.wav", bytes);
        WavHeader header;
        return ReadWavHeader(box / "A.WAV", header);
    };
    EXPECT_TRUE(standard(ToneWave({}, 10)));
    EXPECT_FALSE(standard(ToneWave({1, 44100, 16, 1}, 10)));
    EXPECT_FALSE(standard(Riff(Chunk("fmt ", FormatBlock({2, 44100, 16, 7})))));
    EXPECT_FALSE(standard(ToneWave({}, 10).substr(0, 30)));
    EXPECT_FALSE(standard(""));
    WavHeader header;
    EXPECT_FALSE(ReadWavHeader(box / "missing.wav", header));
    EXPECT_EQ(ClassifyWav(box / "missing.wav", AudioKind::Mp3).mode, -1);
}

TEST(WaveChunks, AreFoundInAnyOrderAndWithAnySize)
{
    const SoundForm form;
    const std::string sound = SoundData(form, 100, [](double, int) { return 0.1; });
    const std::string data = Chunk("data", sound);
    const std::string list = Chunk("LIST", "INFOodd");
    const std::string cue = Chunk("cue ", std::string(28, '\1'));
    for (const std::size_t size : {16U, 18U, 40U, 50U}) {
        const std::string format = Chunk("fmt ", FormatBlock(form, size));
        for (const std::string& chunks :
             {format + data, list + format + cue + data, data + list + format,
              format + Chunk("fact", Little(100, 4)) + data + Chunk("id3 ", "ID3 tag")}) {
            const auto facts = Walk(Riff(chunks));
            ASSERT_TRUE(facts) << size;
            EXPECT_EQ(facts->formatTag, waveTagPcm);
            EXPECT_EQ(facts->frames, 100U);
            EXPECT_EQ(facts->dataSize, sound.size());
            EXPECT_EQ(Riff(chunks).substr(facts->dataStart, sound.size()), sound);
        }
    }
    // Sizes that lie: no sound beyond the file, all of it where the writer was killed.
    const std::string format = Chunk("fmt ", FormatBlock(form));
    for (const std::uint64_t claimed : {UINT64_C(0), UINT64_C(0xFFFFFFFF), UINT64_C(100'000)}) {
        const auto facts = Walk(Riff(format + "data" + Little(claimed, 4) + sound));
        ASSERT_TRUE(facts);
        EXPECT_EQ(facts->frames, 100U) << claimed;
    }
    const auto silent = Walk(Riff(format + Chunk("data", "") + list));
    ASSERT_TRUE(silent);
    EXPECT_EQ(silent->frames, 0U) << "nothing, and a chunk behind it";
    std::string block = FormatBlock(form);
    block[12] = 3; // bytes of a frame, in which two samples of 16 bits have no place
    const auto narrow = Walk(Riff(Chunk("fmt ", block) + data));
    ASSERT_TRUE(narrow);
    EXPECT_EQ(narrow->frames, 100U);
    for (const std::string& bad :
         {Riff(format), Riff(data), Riff(Chunk("fmt ", "short") + data), std::string{"RIFF"},
          Riff(Chunk("fmt ", std::string(16, '\0')) + data), std::string(5000, '\0')})
        EXPECT_FALSE(Walk(bad));
    const std::string whole = Riff(list + format + data);
    for (std::size_t length = 0; length < whole.size(); ++length)
        if (const auto facts = Walk(whole.substr(0, length))) {
            EXPECT_LE(facts->dataStart + facts->dataSize, length);
        }
}

TEST(WaveChunks, TheFactCutsTheLastBlockAndNothingElse)
{
    EXPECT_EQ(TrimmedFrames(3 * 2036, 2036, 5000), 5000U);
    EXPECT_EQ(TrimmedFrames(3 * 2036, 2036, 3 * 2036), 3U * 2036);
    EXPECT_EQ(TrimmedFrames(3 * 2036, 2036, 2 * 2036), 3U * 2036) << "a whole block is no filling";
    EXPECT_EQ(TrimmedFrames(3 * 2036, 2036, 0), 3U * 2036);
    EXPECT_EQ(TrimmedFrames(3 * 2036, 2036, 99'999), 3U * 2036);
    EXPECT_EQ(TrimmedFrames(100, 1, 50), 100U) << "of plain samples all count";
}

} // namespace
} // namespace kestrova
