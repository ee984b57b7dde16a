#pragma once

#include "audio/ms_adpcm_reader.h"

#include <cstdint>
#include <memory>
#include <span>

namespace kestrova
{

/// The sound of a wave, decoded as it is read and ended where it ends: what fills the last block of
/// a coded wave is left out.
class WaveReader
{
public:
    /// `Damaged`, with the decoder's words as the reason, for what is no wave that can be decoded.
    static Result<WaveReader> Open(const Path& file);
    WaveReader(WaveReader&&) noexcept;
    ~WaveReader();

    [[nodiscard]] int Channels() const { return channels_; }
    [[nodiscard]] int Rate() const { return rate_; }
    /// Of a decoded sample: 16 for every kind of ADPCM; 32 for what is not whole numbers.
    [[nodiscard]] int Bits() const { return bits_; }
    [[nodiscard]] std::uint64_t Frames() const { return frames_; }

    /// Whole frames, up to the end; the frames that were read. A wave that breaks off gives fewer
    /// than `Frames` in all. Numbers of more than 16 bits are cut to shorts, so read them as
    /// floats.
    std::size_t Read(std::span<std::int16_t> into);
    /// Full loudness is 1.
    std::size_t Read(std::span<float> into);

private:
    WaveReader() = default;

    std::unique_ptr<void, void (*)(void*)> handle_{nullptr, nullptr};
    std::optional<MsAdpcmReader> blocks_; ///< in place of the handle, for the game's own form
    int channels_ = 0;
    int rate_ = 0;
    int bits_ = 0;
    std::uint64_t frames_ = 0;
    std::uint64_t left_ = 0;
};

} // namespace kestrova
