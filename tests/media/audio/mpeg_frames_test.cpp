#include "audio/mpeg_frames.h"
#include "sandbox/sound_files.h"

#include <gtest/gtest.h>

namespace kestrova
{
namespace
{

using namespace kestrova::testing;

std::string Header(unsigned second, unsigned third, unsigned fourth = 0)
{
    return {'\xFF', static_cast<char>(second), static_cast<char>(third), static_cast<char>(fourth)};
}

/// A frame with that header and nothing in it.
std::string Frame(const std::string& header, std::size_t size)
{
    return header + std::string(size - 4, '\0');
}

const std::string usual = Frame(Header(0xFB, 0x90), 417); // layer III, 128 kbit/s, 44100 Hz

std::string Times(int count, const std::string& text)
{
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

TEST(MpegFrames, HeadersAreReadByTheTables)
{
    struct Row {
        unsigned second, third, fourth;
        int version, layer, kbits, rate, channels;
        std::uint32_t samples, size;
    };
    const Row rows[] = {
        {0xFB, 0x90, 0x00, 1, 3, 128, 44100, 2, 1152, 417},
        {0xFB, 0x92, 0xC0, 1, 3, 128, 44100, 1, 1152, 418},
        {0xFB, 0xE8, 0x00, 1, 3, 320, 32000, 2, 1152, 1440},
        {0xFD, 0xE4, 0x00, 1, 2, 384, 48000, 2, 1152, 1152},
        {0xFF, 0xE2, 0x00, 1, 1, 448, 44100, 2, 384, 488},
        {0xF3, 0x34, 0x00, 2, 3, 24, 24000, 2, 576, 72},
        {0xF5, 0x18, 0xC0, 2, 2, 8, 16000, 1, 1152, 72},
        {0xF7, 0xE8, 0x00, 2, 1, 256, 16000, 2, 384, 768},
        {0xE3, 0x18, 0xC0, 3, 3, 8, 8000, 1, 576, 72},
    };
    for (const Row& row : rows) {
        const auto frame = ParseMpegHeader(Header(row.second, row.third, row.fourth));
        ASSERT_TRUE(frame) << row.second << " " << row.third;
        EXPECT_EQ(frame->version, row.version);
        EXPECT_EQ(frame->layer, row.layer);
        EXPECT_EQ(frame->kbits, row.kbits) << row.second;
        EXPECT_EQ(frame->rate, row.rate) << row.second;
        EXPECT_EQ(frame->channels, row.channels);
        EXPECT_EQ(frame->samples, row.samples) << row.second;
        EXPECT_EQ(frame->size, row.size) << row.second;
    }
    for (const auto& [second, third] :
         {std::pair{0xEBU, 0x90U}, {0xF9U, 0x90U}, {0xFBU, 0xF0U}, {0xFBU, 0x9CU}, {0x1BU, 0x90U}})
        EXPECT_FALSE(ParseMpegHeader(Header(second, third))) << second << " " << third;
}

TEST(MpegFrames, SoundIsCountedPastTagsAndDamage)
{
    const auto frames = [](const std::string& bytes) { return ScanMpeg(bytes).frames; };
    const std::string sound = Times(10, usual);
    EXPECT_EQ(frames(sound), 10U);
    EXPECT_EQ(ScanMpeg(sound).samples, 11520U);
    EXPECT_EQ(frames(usual), 1U);
    // A tag with a picture in it that looks like frames.
    const std::string tag =
        "ID3" + std::string("\4\0\0\0\0\x40\0", 7) + Times(20, usual).substr(0, 8192);
    EXPECT_EQ(frames(tag + sound), 10U);
    EXPECT_EQ(frames(std::string("ID3\4\0\0\x7F\x7F\x7F\x7F", 10) + sound), 10U)
        << "a size that lies";
    EXPECT_EQ(frames(sound + "TAG" + std::string(125, ' ')), 10U);
    EXPECT_EQ(frames(sound + std::string(1000, '\xFF') + sound), 20U);
    EXPECT_EQ(frames(sound + usual.substr(0, 300)), 10U) << "a cut frame is no sound";
    EXPECT_EQ(frames("junk\xFF\xFB\x90junk" + sound), 10U);
    const std::string loud = Frame(Header(0xFB, 0xB0), 626);
    EXPECT_TRUE(ScanMpeg(sound + loud + sound).variable);
    EXPECT_EQ(frames(sound + loud + sound), 21U);
    EXPECT_FALSE(ScanMpeg(sound).variable);
    const std::string freeFrame = Frame(Header(0xFB, 0x00), 700);
    EXPECT_EQ(frames(Times(5, freeFrame)), 5U);
    // A frame that only tells of the others, in stereo and in mono of a low rate.
    std::string table = usual;
    table.replace(36, 4, "Info");
    EXPECT_EQ(frames(table + sound), 10U);
    EXPECT_EQ(frames(table), 0U);
    std::string lowTable = Frame(Header(0xF3, 0x80, 0xC0), 208);
    const std::string low = Times(3, lowTable);
    lowTable.replace(13, 4, "Xing");
    EXPECT_EQ(frames(lowTable + low), 3U);
    for (const std::string& silent :
         {std::string{}, std::string(4000, '\0'), std::string(4000, '\xFF'), std::string{"ID3"},
          std::string{"RIFF....WAVE and so on, no frame at all"}, usual.substr(0, 416)})
        EXPECT_EQ(frames(silent), 0U);
    for (std::size_t length = 0; length < sound.size(); ++length)
        EXPECT_EQ(frames(sound.substr(0, length)), length / 417);
}

TEST(MpegFrames, NoiseAndPlainSamplesAreNoSound)
{
    std::string noise;
    std::uint32_t state = 1;
    for (int i = 0; i < 1'000'000; ++i) {
        state = state * 1664525U + 1013904223U;
        noise += static_cast<char>(state >> 24);
    }
    EXPECT_EQ(ScanMpeg(noise).frames, 0U);
    // Samples about zero are full of what looks like headers.
    std::string quiet;
    for (const char byte : noise.substr(0, 600'000))
        quiet += Little(static_cast<std::uint16_t>(byte % 4), 2);
    EXPECT_EQ(ScanMpeg(Riff(Chunk("fmt ", FormatBlock({})) + Chunk("data", quiet))).frames, 0U);
    // A wave may hold frames, too.
    const std::string format = FormatBlock({2, 44100, 16, 0x55});
    EXPECT_EQ(ScanMpeg(Riff(Chunk("fmt ", format) + Chunk("data", Times(10, usual)))).frames, 10U);
}

TEST(MpegFrames, TheDurationIsRough)
{
    const auto seconds = [](std::size_t size, const std::string& frame) {
        std::string bytes = frame;
        bytes.resize(size);
        return DurationOfMpeg(bytes);
    };
    EXPECT_EQ(seconds(1000, usual), -1); // 0.0625 - 1
    EXPECT_EQ(seconds(16000, usual), 1); // exactly 0
    EXPECT_EQ(seconds(16000 * 61, usual), 60);
    EXPECT_EQ(seconds(9000, Header(0xF3, 0x34)), 2);
    EXPECT_EQ(seconds(5000, Header(0xFB, 0x00)), 1) << "free format has no bit rate";
    EXPECT_EQ(seconds(3, usual), 1);
    EXPECT_EQ(DurationOfMpeg(std::string(3000, '\0') + usual), -1);
    EXPECT_EQ(DurationOfMpeg(std::string(3000, '\0')), 1);
}

} // namespace
} // namespace kestrova
