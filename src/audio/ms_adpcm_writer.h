#pragma once

#include <cstdint>
#include <span>
#include <string>

/// Waves in Microsoft's 4-bit ADPCM, little-endian, as the game plays them:
///
///      0 12  "RIFF", size of the rest, "WAVE"
///     12 58  "fmt ", 50: tag 2, channels, rate 4, bytes a second 4, block size 2, bits 4, 32 more:
///            samples a block, 7, seven pairs of coefficients, all 2
///     70 12  "fact", 4: the true number of samples of a channel
///     82  8  "data", size; then the blocks
///
/// A block, each item once a channel: predictor 1, step 2, second sample 2, first sample 2; then
/// the channels' codes in turn, four bits each, the high half of a byte first.
namespace kestrova
{

/// The wave of samples that stand channel by channel (1 or 2 channels; a part of a last frame is
/// left out). 2,036 samples a block at 44,100 Hz stereo; the last block is filled with silence.
/// A block takes the predictor that gives the smallest error when all are tried.
std::string EncodeMsAdpcmWave(std::span<const std::int16_t> interleaved, int channels, int rate);

} // namespace kestrova
