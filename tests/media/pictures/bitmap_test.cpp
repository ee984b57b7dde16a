#include "pictures/bitmap.h"

#include <gtest/gtest.h>

namespace kestrova
{
namespace
{

std::string Number(std::uint64_t value, int width)
{
    std::string bytes;
    for (int i = 0; i < width; ++i)
        bytes += static_cast<char>((value >> (8 * i)) & 0xFF);
    return bytes;
}

/// A bitmap made by hand: `extra` is masks and palette, as they follow the header.
struct Sketch {
    std::int64_t width = 0;
    std::int64_t height = 0;
    int bits = 24;
    int packing = 0;
    std::string extra;
    std::string pixels;
    int header = 40;
    int coloursUsed = 0;

    [[nodiscard]] std::string Bytes() const
    {
        const int size = header == 12 ? 2 : 4;
        std::string dib = Number(static_cast<std::uint64_t>(header), 4) +
                          Number(static_cast<std::uint64_t>(width), size) +
                          Number(static_cast<std::uint64_t>(height), size) + Number(1, 2) +
                          Number(static_cast<std::uint64_t>(bits), 2);
        if (header > 16)
            dib += Number(static_cast<std::uint64_t>(packing), 4) + std::string(12, '\0') +
                   Number(static_cast<std::uint64_t>(coloursUsed), 4) + std::string(4, '\0');
        if (header > 40) // masks stand inside
            dib += extra.substr(0, 12) + std::string(static_cast<std::size_t>(header) - 52, '\0');
        else
            dib += extra;
        return "BM" + std::string(8, '\0') + Number(14 + dib.size(), 4) + dib + pixels;
    }
};

std::string Rgb(const Picture& picture)
{
    return {picture.rgb.begin(), picture.rgb.end()};
}

using namespace std::string_literals;
const std::string R = "\xFF\0\0"s, G = "\0\xFF\0"s, B = "\0\0\xFF"s, W = "\xFF\xFF\xFF"s,
                  K = "\0\0\0"s;
/// The picture that all sketches of the first test show: three columns, two rows.
const std::string shown = R + G + B + W + K + R;

const std::string palette4 = "\0\0\0\0"s + "\0\0\xFF\0"s + "\0\xFF\0\0"s + "\xFF\0\0\0"s +
                             "\xFF\xFF\xFF\0"s; // black, red, green, blue, white
const std::string palette3 = "\0\0\0"s + "\0\0\xFF"s + "\0\xFF\0"s + "\xFF\0\0"s + "\xFF\xFF\xFF"s;

TEST(Bitmap, EveryDepthAndPackingShowsTheSamePicture)
{
    const std::string eight = "\4\0\1\0"s + "\1\2\3\0"s;
    const std::string masks565 = Number(0xF800, 4) + Number(0x07E0, 4) + Number(0x001F, 4);
    const std::string masksOdd = Number(0x3FF00000, 4) + Number(0x000FFC00, 4) + Number(0x3FF, 4);
    const auto words = [](std::initializer_list<unsigned> values, int width) {
        std::string bytes;
        for (const unsigned value : values)
            bytes += Number(value, width);
        return bytes;
    };
    const std::vector<std::pair<const char*, Sketch>> sketches = {
        {"24",
         {3, 2, 24, 0, "", "\xFF\xFF\xFF\0\0\0\0\0\xFF___"s + "\0\0\xFF\0\xFF\0\xFF\0\0___"s}},
        {"24 from the top",
         {3, -2, 24, 0, "", "\0\0\xFF\0\xFF\0\xFF\0\0___"s + "\xFF\xFF\xFF\0\0\0\0\0\xFF"s}},
        {"8", {3, 2, 8, 0, palette4, eight, 40, 5}},
        {"8, OS/2", {3, 2, 8, 0, palette3, eight, 12}},
        {"8, OS/2 2 cut to 16", {3, 2, 8, 0, palette4, eight, 16}},
        {"4", {3, 2, 4, 0, palette4, "\x40\x10\0\0"s + "\x12\x30\0\0"s, 40, 5}},
        {"rle8",
         {3, 2, 8, 1, palette4, "\1\4\0\2\1\0\1\1\0\0"s + "\0\3\1\2\3\0"s + "\0\1"s, 40, 5}},
        {"rle4", {3, 2, 4, 2, palette4, "\2\x40\1\x10\0\0"s + "\0\3\x12\x30\0\1"s, 40, 5}},
        {"16 as 555",
         {3, 2, 16, 0, "", words({0x7FFF, 0, 0x7C00, 0}, 2) + words({0x7C00, 0x03E0, 0x1F, 0}, 2)}},
        {"16 as 565",
         {3, 2, 16, 3, masks565,
          words({0xFFFF, 0, 0xF800, 0}, 2) + words({0xF800, 0x07E0, 0x1F, 0}, 2)}},
        {"32", {3, 2, 32, 0, "", words({0xFFFFFF, 0, 0xFF0000, 0xFFFF0000, 0xFF00, 0xFF}, 4)}},
        {"32 with masks of ten bits in a long header",
         {3, 2, 32, 3, masksOdd, words({0x3FFFFFFF, 0, 0x3FF00000, 0x3FF00000, 0xFFC00, 0x3FF}, 4),
          108}},
    };
    for (const auto& [name, sketch] : sketches) {
        const std::string bytes = sketch.Bytes();
        const Result<Picture> picture = DecodePicture(bytes);
        ASSERT_TRUE(picture) << name;
        EXPECT_EQ(picture->width, 3) << name;
        EXPECT_EQ(picture->height, 2) << name;
        EXPECT_TRUE(Rgb(*picture) == shown) << name;
        // Cut anywhere it is a failure, except for padding and the end mark that may be missing.
        std::size_t shortest = bytes.size();
        while (shortest > 0 && DecodeBitmap(std::string_view(bytes).substr(0, shortest)))
            --shortest;
        EXPECT_GE(shortest + 5, bytes.size()) << name;
        for (std::size_t size = 0; size < shortest; ++size)
            EXPECT_FALSE(DecodeBitmap(std::string_view(bytes).substr(0, size))) << name << size;
    }
}

TEST(Bitmap, OneBitAndRunsThatSkip)
{
    const Sketch oneBit{9, 1, 1, 0, "\0\0\0\0\xFF\xFF\xFF\0"s, "\xAA\x80\0\0"s};
    const Result<Picture> stripes = DecodeBitmap(oneBit.Bytes());
    ASSERT_TRUE(stripes);
    EXPECT_TRUE(Rgb(*stripes) == W + K + W + K + W + K + W + K + W);

    const Sketch jump{3, 2, 8, 1, palette4, "\1\1\0\2\1\1\1\3\0\1"s, 40, 5};
    const Result<Picture> jumped = DecodeBitmap(jump.Bytes());
    ASSERT_TRUE(jumped);
    EXPECT_TRUE(Rgb(*jumped) == K + K + B + R + K + K);
    // Half tones of 5 bits come out rounded: 29 of 31 are 238.5 of 255.
    const Result<Picture> tone = DecodeBitmap(Sketch{1, 1, 16, 0, "", "\xA0\x77\0\0"s}.Bytes());
    ASSERT_TRUE(tone);
    EXPECT_EQ(tone->rgb, (std::vector<std::uint8_t>{239, 239, 0}));
    // Runs beyond the row's or the picture's end write nowhere.
    EXPECT_TRUE(DecodeBitmap(Sketch{3, 1, 8, 1, palette4, "\xFF\1\0\1"s, 40, 5}.Bytes()));
    EXPECT_FALSE(DecodeBitmap(Sketch{3, 1, 8, 1, palette4, "\0\2\0\xFF\3\1\0\1"s, 40, 5}.Bytes()));
}

TEST(Bitmap, HostileHeadersAreRefusedBeforeMemoryIsTaken)
{
    const std::string some(64, '\1');
    const std::vector<Sketch> sketches = {
        {0x7FFFFFFF, 0x7FFFFFFF, 24, 0, "", some},
        {0x7FFFFFFF, 1, 24, 0, "", some},
        {1, INT32_MIN, 24, 0, "", some},
        {-4, 4, 24, 0, "", some},
        {0, 4, 24, 0, "", some},
        {8000, 8000, 24, 0, "", some},
        {8000, 8000, 8, 1, palette4, some, 40, 5},
        {3, 2, 24, 1, "", some},
        {3, 2, 2, 0, "", some},
        {3, 2, 64, 0, "", some},
        {3, 2, 24, 4, "", some},
        {3, 2, 16, 3, "", "\1\1"},
        {3, 2, 8, 0, palette4, "", 40, 5},
    };
    for (const Sketch& sketch : sketches)
        EXPECT_FALSE(DecodeBitmap(sketch.Bytes()))
            << sketch.width << "x" << sketch.height << " " << sketch.bits << " " << sketch.packing;
    // A palette that claims more than there is, and one that is not there at all, are black.
    const Result<Picture> bare = DecodeBitmap(Sketch{1, 1, 8, 0, "", "\7\0\0\0"s, 40, -1}.Bytes());
    ASSERT_TRUE(bare);
    EXPECT_TRUE(Rgb(*bare) == K);
}

TEST(Bitmap, WhatIsWrittenIsWhatTheGameReads)
{
    Picture picture{3, 2, {shown.begin(), shown.end()}};
    const std::string bytes = EncodeBitmap(picture);
    const Sketch same{
        3, 2, 24, 0, "", "\xFF\xFF\xFF\0\0\0\0\0\xFF\0\0\0"s + "\0\0\xFF\0\xFF\0\xFF\0\0\0\0\0"s};
    std::string expected = same.Bytes();
    expected.replace(2, 4, Number(expected.size(), 4));
    expected.replace(34, 4, Number(24, 4));
    EXPECT_TRUE(bytes == expected);
}

} // namespace
} // namespace kestrova
