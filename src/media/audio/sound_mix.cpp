#include "audio/sound_mix.h"

#include <algorithm>
#include <cmath>

namespace kestrova
{

namespace
{

enum class Side { Left, Right, Both, None };

/// Left and right first, then by number of channels as the format's usual order has it.
Side SideOf(std::size_t channel, std::size_t channels)
{
    const bool hasCentre = channels == 3 || channels >= 5;
    const bool hasLow = channels >= 6;
    if (channel < 2)
        return channel == 0 ? Side::Left : Side::Right;
    if (hasCentre && channel == 2)
        return Side::Both;
    if (hasLow && channel == 3)
        return Side::None;
    if (channels == 7 && channel == 4)
        return Side::Both; // one behind
    const std::size_t first =
        2 + (hasCentre ? 1U : 0U) + (hasLow ? 1U : 0U) + (channels == 7 ? 1U : 0U);
    return (channel - first) % 2 == 0 ? Side::Left : Side::Right;
}

} // namespace

ChannelMix::ChannelMix(int from, int to)
    : from_(static_cast<std::size_t>(from)), to_(static_cast<std::size_t>(to)),
      weights_(from_ * to_)
{
    constexpr float half = 0.70710678F; // of the power
    for (std::size_t target = 0; target < to_; ++target) {
        float sum = 0;
        for (std::size_t channel = 0; channel < from_; ++channel) {
            const Side side = from_ == 1 ? Side::Both : SideOf(channel, from_);
            const bool here =
                to_ == 1 || side == Side::Both || (side == Side::Left) == (target == 0);
            float weight = side == Side::None || !here ? 0.0F : channel < 2 ? 1.0F : half;
            if (to_ == 1 && channel >= 2 && side == Side::Both)
                weight = 2 * half; // it is heard on both sides
            weights_[target * from_ + channel] = weight;
            sum += weight;
        }
        for (std::size_t channel = 0; channel < from_; ++channel)
            weights_[target * from_ + channel] /= sum;
    }
}

void ChannelMix::Mix(std::span<const float> source, std::vector<float>& target) const
{
    const std::size_t frames = source.size() / from_;
    target.resize(frames * to_);
    if (from_ == 2 && to_ == 1) {
        for (std::size_t i = 0; i < frames; ++i)
            target[i] = (source[2 * i] + source[2 * i + 1]) * 0.5F;
        return;
    }
    for (std::size_t i = 0; i < frames; ++i)
        for (std::size_t out = 0; out < to_; ++out) {
            float sum = 0;
            for (std::size_t in = 0; in < from_; ++in)
                sum += source[i * from_ + in] * weights_[out * from_ + in];
            target[i * to_ + out] = sum;
        }
}

void Dither::Round(std::span<const float> samples, float gain, std::vector<std::int16_t>& rounded)
{
    constexpr float full = 32768.0F;
    constexpr float unit = 1.0F / 16777216.0F; // the noise is made of 24 bits
    rounded.resize(samples.size());
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const float sample = samples[i];
        peak_ = std::max(peak_, std::abs(sample));
        state_ = state_ * 1664525U + 1013904223U;
        const float noise = static_cast<float>(state_ >> 8) * unit;
        // The difference of two even noises is a triangular one, and loudest where ears are poor.
        const float place =
            sample * (gain * full) + (sample == 0.0F ? 0.0F : noise - last_[channel_]);
        last_[channel_] = noise;
        channel_ = channel_ + 1 == last_.size() ? 0 : channel_ + 1;
        rounded[i] = static_cast<std::int16_t>(std::lrintf(std::clamp(place, -full, full - 1)));
    }
}

} // namespace kestrova
