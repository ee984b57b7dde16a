#pragma once

#include "core/names.h"

#include <cstdint>
#include <optional>
#include <string_view>

/// The frames of MPEG audio (ISO 11172-3 and 13818-3, and the low rates known as 2.5).
namespace kestrova
{

struct MpegFrame {
    int version = 1; ///< 1, 2, or 3 for 2.5
    int layer = 3;   ///< 1 to 3
    int kbits = 0;   ///< 0: free format, its size only told by where the next frame begins
    int rate = 0;    ///< Hz
    int channels = 0;
    std::uint32_t samples = 0; ///< of a channel
    std::uint32_t size = 0;    ///< bytes with the header; 0 in free format
    std::uint32_t padding = 0; ///< bytes, part of the size
};

/// No value when the four bytes are no frame's header: sync, version, layer, bit rate and sampling
/// rate are tested.
std::optional<MpegFrame> ParseMpegHeader(std::string_view bytes);

struct MpegFacts {
    std::uint64_t frames = 0;
    std::uint64_t samples = 0; ///< of a channel, over all frames
    MpegFrame first{};
    bool variable = false; ///< bit rates differ
    std::uint64_t audioBytes = 0;
    std::size_t start = 0; ///< where the first frame stands
    bool tagLies = false;  ///< the tag before it tells of more bytes than there are
};

/// Where the sound begins: behind tags that name their size.
std::size_t SkipMpegTags(std::string_view bytes);
/// Walks the frames, past tags and damage. A frame counts when another of its kind, or the end,
/// follows where it ends; in free format several must. A first frame that only tells of the others
/// is none. No frames: no sound, as in a wave of plain samples, some of which look like frames.
MpegFacts ScanMpeg(std::string_view bytes);

/// Roughly the seconds, from the length and the first frame's bit rate, less one; exactly 0 becomes
/// 1, and so does a file without a bit rate.
std::int32_t DurationOfMpeg(std::string_view bytes);
std::int32_t Mp3Duration(const Path& file);

} // namespace kestrova
