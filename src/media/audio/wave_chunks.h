#pragma once

#include "core/files.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>

/// The chunks of a wave (RIFF, Microsoft's and IBM's format of 1991) in whatever order they stand.
/// Sizes are taken for what they can be: no chunk reaches beyond the file.
namespace kestrova
{

inline constexpr int waveTagPcm = 1;
inline constexpr int waveTagMsAdpcm = 2;
inline constexpr int waveTagExtensible = 0xFFFE;

struct WaveFacts {
    int formatTag = 0; ///< what an extensible format block stands for is put in its place
    int channels = 0;
    int bits = 0;
    int blockAlign = 0;
    int samplesPerBlock = 0;      ///< of the formats that are coded in blocks
    bool usualPredictors = false; ///< of Microsoft's ADPCM: the seven that every coder knows
    std::uint32_t rate = 0;       ///< Hz
    std::uint64_t dataStart = 0;
    std::uint64_t dataSize = 0; ///< the bytes that are there
    std::uint64_t missing = 0;  ///< bytes of sound that the file tells of and does not have
    std::optional<std::uint32_t> fact;
    /// Samples of a channel: what the data holds, less what `fact` takes off the last block.
    std::uint64_t frames = 0;
};

/// Bytes at some place. What lies behind the end is left out of the answer.
using ByteSource = std::function<std::size_t(std::uint64_t place, std::span<char> into)>;

/// `Damaged` when there is no format block and data behind one another's sizes. The failure has no
/// subject.
Result<WaveFacts> WalkWave(const ByteSource& bytes, std::uint64_t size);
Result<WaveFacts> WalkWave(const Path& file);

/// False when rate, channels or bits are what no sound has: a header can say anything.
bool CanBeSound(const WaveFacts& facts);

/// How many of `coded` samples a channel are sound. Coders in blocks fill their last block; what
/// the `fact` chunk says counts when that is what it takes off.
std::uint64_t TrimmedFrames(std::uint64_t coded, int samplesPerBlock,
                            std::optional<std::uint32_t> fact);

} // namespace kestrova
