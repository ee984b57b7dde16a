#include "practice/game_data.h"

#include "practice/dice.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace kestrova
{

namespace
{

constexpr std::size_t pageSize = 64 * 1024;
using Page = std::array<std::uint8_t, pageSize>;

void PutWord(Page& page, std::size_t at, unsigned value)
{
    page[at] = static_cast<std::uint8_t>(value);
    page[at + 1] = static_cast<std::uint8_t>(value >> 8);
}

/// Bricks of one colour with joints, two bits of grain a pixel.
void PaintTexture(Page& page, Dice& dice)
{
    const unsigned red = 4 + dice.Below(20);
    const unsigned green = 4 + dice.Below(20);
    const unsigned blue = 4 + dice.Below(20);
    const unsigned across = 16U << dice.Below(3);
    const unsigned down = 8U << dice.Below(3);
    std::uint64_t grain = 0;
    for (unsigned pixel = 0; pixel < pageSize / 2; ++pixel) {
        if (pixel % 16 == 0)
            grain = dice.Next();
        const unsigned x = pixel % 256;
        const unsigned y = pixel / 256;
        const bool joint = x % across == 0 || y % down == 0;
        const unsigned shade = joint ? 0 : 1 + static_cast<unsigned>(grain & 3);
        grain >>= 4;
        PutWord(page, pixel * 2,
                0x8000 | (red + shade) << 10 | (green + shade) << 5 | (blue + shade));
    }
}

/// Corners of rooms: places on a grid, a height that varies, a light, a kind.
void PutRecords(Page& page, Dice& dice)
{
    unsigned height = 2048;
    for (std::size_t at = 0; at < pageSize; at += 16) {
        const std::uint64_t roll = dice.Next();
        height += (roll & 3) == 0 ? 256 : 0;
        PutWord(page, at, static_cast<unsigned>(at / 16 % 32) * 1024);
        PutWord(page, at + 2, height & 0x7FFF);
        PutWord(page, at + 4, static_cast<unsigned>(at / 512 % 64) * 1024);
        PutWord(page, at + 6, 0);
        PutWord(page, at + 8, static_cast<unsigned>(roll >> 8) & 0x1FFF);
        PutWord(page, at + 10, static_cast<unsigned>(roll >> 24) & 0x03);
        PutWord(page, at + 12, static_cast<unsigned>(roll >> 32) & 0x7FFF);
        PutWord(page, at + 14, 16);
    }
}

/// A sound that wanders, in 8 bits.
void PutSound(Page& page, Dice& dice)
{
    int level = 128;
    std::uint64_t steps = 0;
    for (std::size_t at = 0; at < pageSize; ++at) {
        if (at % 12 == 0)
            steps = dice.Next();
        level = std::clamp(level + static_cast<int>(steps & 31) - 15, 0, 255);
        steps >>= 5;
        page[at] = static_cast<std::uint8_t>(level);
    }
}

} // namespace

std::string MakeGameData(std::uint64_t seed, std::size_t size)
{
    Dice dice{seed};
    std::string bytes(size, '\0');
    Page page{};
    for (std::size_t at = 0; at < size; at += pageSize) {
        const unsigned kind = dice.Below(100);
        if (kind < 48)
            PaintTexture(page, dice);
        else if (kind < 72)
            PutRecords(page, dice);
        else
            PutSound(page, dice);
        std::memcpy(bytes.data() + at, page.data(), std::min(pageSize, size - at));
    }
    constexpr std::array begin = {'T', 'R', '4', '\0'};
    std::memcpy(bytes.data(), begin.data(), std::min(begin.size(), size));
    return bytes;
}

} // namespace kestrova
