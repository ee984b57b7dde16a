#pragma once

#include <cstdint>
#include <span>
#include <vector>

/// Samples from one number of channels to another, and from fractions to whole numbers.
namespace kestrova
{

/// What each channel of the target takes of each channel of the source, so that full loudness
/// everywhere stays full loudness. Channels stand in the order of the format; the sixth of 5.1, the
/// lowest sounds', is left out.
class ChannelMix
{
public:
    /// `to` is 1 or 2.
    ChannelMix(int from, int to);
    [[nodiscard]] bool IsPlain() const { return from_ == to_; }
    /// Frames of the source as frames of the target.
    void Mix(std::span<const float> source, std::vector<float>& target) const;

private:
    std::size_t from_;
    std::size_t to_;
    std::vector<float> weights_; ///< `from` numbers for each channel of the target
};

/// Rounds to 16 bits over a noise that has nothing to do with the sound, so that what is lost is
/// not heard as distortion; the same input gives the same output. Silence stays silence.
class Dither
{
public:
    explicit Dither(std::size_t channels) : last_(channels) {}
    /// `gain` is applied first. The loudest sample that came, full loudness being 1, is noted.
    void Round(std::span<const float> samples, float gain, std::vector<std::int16_t>& rounded);
    [[nodiscard]] float Peak() const { return peak_; }

private:
    std::vector<float> last_; ///< the noise of each channel's sample before
    std::size_t channel_ = 0;
    std::uint32_t state_ = 0x9E3779B9;
    float peak_ = 0;
};

} // namespace kestrova
