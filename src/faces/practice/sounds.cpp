#include "practice/sounds.h"

#include "practice/dice.h"

#include <cmath>
#include <numbers>
#include <string_view>

namespace kestrova
{

namespace
{

void PutNumber(std::string& bytes, std::uint32_t value, int width)
{
    for (int i = 0; i < width; ++i)
        bytes += static_cast<char>(value >> (8 * i) & 0xFF);
}

} // namespace

std::string SampleWave(std::uint64_t seed, double seconds)
{
    constexpr std::uint32_t sampleRate = 22050;
    constexpr std::uint32_t width = 2;
    constexpr std::uint32_t headBehindSize = 36;
    const auto frames = static_cast<std::uint32_t>(seconds * sampleRate);
    std::string bytes = "RIFF";
    PutNumber(bytes, headBehindSize + frames * width, 4);
    bytes += "WAVEfmt ";
    PutNumber(bytes, 16, 4);
    PutNumber(bytes, 1, 2); // plain numbers
    PutNumber(bytes, 1, 2);
    PutNumber(bytes, sampleRate, 4);
    PutNumber(bytes, sampleRate * width, 4);
    PutNumber(bytes, width, 2);
    PutNumber(bytes, width * 8, 2);
    bytes += "data";
    PutNumber(bytes, frames * width, 4);
    Dice dice{seed};
    const double pitch = 200 + 40 * dice.Below(20);
    for (std::uint32_t i = 0; i < frames; ++i) {
        const double time = static_cast<double>(i) / sampleRate;
        const double fading = 1 - static_cast<double>(i) / frames;
        const double value = std::sin(2 * std::numbers::pi * pitch * time) * fading * 12000;
        PutNumber(bytes, static_cast<std::uint16_t>(static_cast<std::int16_t>(value)), 2);
    }
    return bytes;
}

std::string SilentMp3(unsigned frames)
{
    // 32 kbit/s: 144 * 32,000 / 44,100 bytes a frame. Without side information nothing sounds.
    constexpr std::size_t frameSize = 104;
    constexpr std::string_view head{"\xFF\xFB\x10\xC0", 4};
    std::string bytes;
    for (unsigned i = 0; i < frames; ++i)
        bytes += std::string{head} + std::string(frameSize - head.size(), '\0');
    return bytes;
}

} // namespace kestrova
