#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

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

/// Codes samples as they come, whole blocks at a time. 2,036 samples a block at 44,100 Hz stereo. A
/// block takes the predictor that gives the smallest error when all are tried.
class MsAdpcmEncoder
{
public:
    /// 1 or 2 channels.
    MsAdpcmEncoder(int channels, int rate);

    /// What stands before the blocks of a wave of that many samples a channel.
    [[nodiscard]] std::string Header(std::uint64_t frames) const;
    /// Bytes of the whole wave.
    [[nodiscard]] std::uint64_t WaveSize(std::uint64_t frames) const;
    /// Appends the blocks that are full now; samples stand channel by channel, whole frames.
    void Encode(std::span<const std::int16_t> interleaved, std::string& bytes);
    /// Appends the last block, filled up with silence.
    void Finish(std::string& bytes);

private:
    /// What a channel hands from block to block.
    struct Carry {
        std::size_t predictor = 1;
        int step = 16;
    };
    struct ChannelBlock {
        std::size_t predictor = 0;
        int firstStep = 16;
        std::vector<std::uint8_t> codes; ///< from the third sample on
    };
    static void EncodeChannel(std::span<const std::int16_t> samples, std::size_t heard,
                              Carry& carry, ChannelBlock& block);
    void PutBlock(std::span<const std::int16_t> interleaved, std::string& bytes);

    std::size_t channels_;
    std::size_t rate_;
    std::size_t blockSize_;
    std::size_t blockSamples_;
    std::vector<std::int16_t> waiting_; ///< less than a block
    std::array<Carry, 2> carries_{};
    std::array<ChannelBlock, 2> parts_{};
    std::array<std::vector<std::int16_t>, 2> samples_{};
};

/// The whole wave of samples in memory; a part of a last frame is left out.
std::string EncodeMsAdpcmWave(std::span<const std::int16_t> interleaved, int channels, int rate);

} // namespace kestrova
