#pragma once

#include "audio/wave_chunks.h"

#include <vector>

namespace kestrova
{

/// The form of a wave's blocks in Microsoft's 4-bit ADPCM; see `ms_adpcm_writer.h` for a block.
struct MsAdpcmForm {
    std::size_t channels = 2; ///< 1 or 2
    std::size_t blockSize = 2048;
    [[nodiscard]] std::size_t BlockSamples() const
    {
        return (blockSize - 7 * channels) * 2 / channels + 2;
    }
};

/// Decodes a block with the seven usual predictors into `samples`, channel by channel: as many as
/// the block has, or as the span takes. Bytes that lack count as zeros; any bytes give some sound.
void DecodeMsAdpcmBlock(const MsAdpcmForm& form, std::span<const char> block,
                        std::span<std::int16_t> samples);

/// The blocks of a wave, decoded many at a time on all cores.
class MsAdpcmReader
{
public:
    /// No value where the blocks are not of the usual kind.
    static std::optional<MsAdpcmReader> Open(const Path& file, const WaveFacts& facts);

    /// The next whole frames, as many as there are. A part that cannot be read is the end.
    std::size_t Read(std::span<std::int16_t> into);

private:
    MsAdpcmReader() = default;
    bool DecodeMore();

    platform::File file_;
    MsAdpcmForm form_;
    std::uint64_t place_ = 0;
    std::uint64_t end_ = 0;
    std::string bytes_;
    std::vector<std::int16_t> samples_;
    std::size_t taken_ = 0; ///< of `samples_`
};

} // namespace kestrova
