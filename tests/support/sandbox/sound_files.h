#pragma once

#include <cmath>
#include <cstdint>
#include <functional>
#include <numbers>
#include <string>
#include <string_view>
#include <vector>

/// Waves and mp3 frames made by hand, well formed and otherwise.
namespace kestrova::testing
{

inline std::string Little(std::uint64_t number, std::size_t bytes)
{
    return {reinterpret_cast<const char*>(&number), bytes};
}

inline std::string Chunk(std::string_view name, const std::string& content)
{
    return std::string{name} + Little(content.size(), 4) + content +
           std::string(content.size() % 2, '\0');
}

inline std::string Riff(const std::string& chunks)
{
    return "RIFF" + Little(4 + chunks.size(), 4) + "WAVE" + chunks;
}

struct SoundForm {
    int channels = 2;
    int rate = 44100;
    int bits = 16;
    int tag = 1; ///< 3: fractions of 32 bits
};

inline std::string FormatBlock(const SoundForm& form, std::size_t size = 16)
{
    const auto align = static_cast<std::uint64_t>(form.channels * form.bits / 8);
    std::string block = Little(static_cast<std::uint64_t>(form.tag), 2) +
                        Little(static_cast<std::uint64_t>(form.channels), 2) +
                        Little(static_cast<std::uint64_t>(form.rate), 4) +
                        Little(align * static_cast<std::uint64_t>(form.rate), 4) +
                        Little(align, 2) + Little(static_cast<std::uint64_t>(form.bits), 2);
    if (size > block.size())
        block += Little(size - 18, 2);
    if (size == 40)
        block += Little(static_cast<std::uint64_t>(form.bits), 2) + Little(3, 4) +
                 Little(static_cast<std::uint64_t>(form.tag), 2) +
                 std::string("\x00\x00\x00\x00\x10\x00\x80\x00\x00\xAA\x00\x38\x9B\x71", 14);
    block.resize(size);
    if (size == 40)
        block.replace(0, 2, Little(0xFFFE, 2));
    return block;
}

/// From -1 to 1 by seconds and channel.
using Shape = std::function<double(double seconds, int channel)>;

inline double SineAt(double seconds, double pitch)
{
    return std::sin(2 * std::numbers::pi * pitch * seconds);
}

inline std::string SoundData(const SoundForm& form, std::size_t frames, const Shape& shape)
{
    std::string data;
    for (std::size_t i = 0; i < frames; ++i)
        for (int channel = 0; channel < form.channels; ++channel) {
            const double value = shape(static_cast<double>(i) / form.rate, channel);
            const double full = std::ldexp(1.0, form.bits - 1) - 1;
            const auto number = static_cast<std::int64_t>(std::llround(value * full));
            const auto part = static_cast<float>(value);
            if (form.tag == 3)
                data.append(reinterpret_cast<const char*>(&part), sizeof part);
            else
                data += Little(static_cast<std::uint64_t>(form.bits == 8 ? number + 128 : number),
                               static_cast<std::size_t>(form.bits / 8));
        }
    return data;
}

inline std::string WaveOf(const SoundForm& form, std::size_t frames, const Shape& shape)
{
    return Riff(Chunk("fmt ", FormatBlock(form)) + Chunk("data", SoundData(form, frames, shape)));
}

/// A quiet tone, another one each channel.
inline std::string ToneWave(const SoundForm& form, std::size_t frames)
{
    return WaveOf(form, frames,
                  [](double t, int channel) { return 0.5 * SineAt(t, 300 + 100 * channel); });
}

/// The samples of a wave with a plain header of 44 bytes.
inline std::vector<std::int16_t> SamplesOf(const std::string& wave)
{
    std::vector<std::int16_t> samples;
    for (std::size_t at = 44; at + 1 < wave.size(); at += 2)
        samples.push_back(static_cast<std::int16_t>(static_cast<unsigned char>(wave[at]) |
                                                    static_cast<unsigned char>(wave[at + 1]) << 8));
    return samples;
}

} // namespace kestrova::testing
