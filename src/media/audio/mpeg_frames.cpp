#include "audio/mpeg_frames.h"

#include "audio/wave_chunks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace kestrova
{

namespace
{

constexpr std::size_t headerSize = 4;
constexpr std::size_t tagHead = 10;
/// No frame is larger: 448 kbit/s of layer I at the lowest rate, free format with room to spare.
constexpr std::size_t mostFrameSize = 16384;

// kbit/s by index, by the five columns of the published tables: layers I, II, III of version 1,
// then layer I and layers II and III of the low sampling rates.
constexpr int kbitTable[5][15] = {
    {0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448},
    {0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384},
    {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320},
    {0, 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256},
    {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160},
};
constexpr int rateTable[3] = {44100, 48000, 32000};

unsigned ByteAt(std::string_view bytes, std::size_t place)
{
    return static_cast<unsigned char>(bytes[place]);
}

bool SameKind(const MpegFrame& a, const MpegFrame& b)
{
    return a.version == b.version && a.layer == b.layer && a.rate == b.rate &&
           (a.kbits == 0) == (b.kbits == 0);
}

std::optional<MpegFrame> FrameAt(std::string_view bytes, std::size_t place)
{
    if (place + headerSize > bytes.size())
        return {};
    return ParseMpegHeader(bytes.substr(place, headerSize));
}

/// Where the next frame of this kind begins; the size of a frame in free format.
std::uint32_t FreeSize(std::string_view bytes, std::size_t place, const MpegFrame& frame)
{
    const std::size_t end = std::min(bytes.size(), place + mostFrameSize);
    for (std::size_t next = place + headerSize; next + headerSize <= end; ++next)
        if (const auto other = FrameAt(bytes, next); other && SameKind(frame, *other))
            return static_cast<std::uint32_t>(next - place);
    return 0;
}

/// Two headers at some distance are found in any noise, a row of them is not.
bool FreeFramesFollow(std::string_view bytes, std::size_t place, MpegFrame frame,
                      std::uint32_t freeSize)
{
    constexpr int row = 4;
    for (int count = 0; count < row; ++count) {
        place += freeSize + frame.padding;
        if (place + headerSize > bytes.size())
            return count > 0 && place <= bytes.size();
        const auto next = FrameAt(bytes, place);
        if (!next || !SameKind(frame, *next))
            return false;
        frame = *next;
    }
    return true;
}

/// True for a frame of silence that holds a table for those who seek in the file.
bool IsTableOfFrames(std::string_view bytes, const MpegFrame& frame)
{
    if (frame.layer != 3)
        return false;
    const std::size_t sideInfo =
        frame.version == 1 ? (frame.channels == 1 ? 17 : 32) : (frame.channels == 1 ? 9 : 17);
    const std::string_view name = bytes.substr(std::min(headerSize + sideInfo, bytes.size()), 4);
    return name == "Xing" || name == "Info";
}

/// True when the bytes are a wave, and what is in it is no mpeg.
bool IsOtherWave(std::string_view bytes)
{
    constexpr int waveTagMpeg = 0x50;
    constexpr int waveTagMp3 = 0x55;
    const auto facts = WalkWave(
        [&](std::uint64_t place, std::span<char> into) {
            const auto from =
                static_cast<std::size_t>(std::min<std::uint64_t>(place, bytes.size()));
            return bytes.copy(into.data(), into.size(), from);
        },
        bytes.size());
    return facts && facts->formatTag != waveTagMpeg && facts->formatTag != waveTagMp3;
}

std::uint32_t SyncSafe(std::string_view bytes, std::size_t place)
{
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < 4; ++i)
        number = number << 7 | (ByteAt(bytes, place + i) & 0x7F);
    return number;
}

} // namespace

std::optional<MpegFrame> ParseMpegHeader(std::string_view bytes)
{
    if (bytes.size() < headerSize || ByteAt(bytes, 0) != 0xFF || (ByteAt(bytes, 1) & 0xE0) != 0xE0)
        return {};
    const unsigned version = ByteAt(bytes, 1) >> 3 & 3;
    const unsigned layer = ByteAt(bytes, 1) >> 1 & 3;
    const unsigned kbits = ByteAt(bytes, 2) >> 4;
    const unsigned rate = ByteAt(bytes, 2) >> 2 & 3;
    if (version == 1 || layer == 0 || kbits == 15 || rate == 3)
        return {};
    MpegFrame frame;
    frame.version = version == 3 ? 1 : version == 2 ? 2 : 3;
    frame.layer = 4 - static_cast<int>(layer);
    const bool low = frame.version > 1;
    const int column = !low ? frame.layer - 1 : frame.layer == 1 ? 3 : 4;
    frame.kbits = kbitTable[column][kbits];
    frame.rate = rateTable[rate] >> (frame.version - 1);
    frame.channels = ByteAt(bytes, 3) >> 6 == 3 ? 1 : 2;
    frame.samples = frame.layer == 1 ? 384 : frame.layer == 3 && low ? 576 : 1152;
    frame.padding = (ByteAt(bytes, 2) >> 1 & 1) * (frame.layer == 1 ? 4 : 1);
    if (frame.kbits > 0) {
        const auto bits = static_cast<std::uint32_t>(frame.kbits) * 1000;
        const auto hertz = static_cast<std::uint32_t>(frame.rate);
        frame.size = frame.layer == 1 ? 12 * bits / hertz * 4 : frame.samples / 8 * bits / hertz;
        frame.size += frame.padding;
    }
    return frame;
}

std::size_t SkipMpegTags(std::string_view bytes)
{
    std::size_t place = 0;
    while (place + tagHead <= bytes.size() && bytes.substr(place, 3) == "ID3") {
        const bool footer = (ByteAt(bytes, place + 5) & 0x10) != 0;
        const std::uint64_t size =
            std::uint64_t{tagHead} + SyncSafe(bytes, place + 6) + (footer ? tagHead : 0);
        if (size > bytes.size() - place)
            return place +
                   tagHead; // a size that lies; the sound is looked for in all that is there
        place += static_cast<std::size_t>(size);
    }
    return place;
}

MpegFacts ScanMpeg(std::string_view bytes)
{
    MpegFacts facts;
    if (IsOtherWave(bytes))
        return facts;
    std::uint32_t freeSize = 0; // without padding
    MpegFrame last;
    bool inStep = false; // the place follows from the frame before
    std::size_t place = SkipMpegTags(bytes);
    facts.tagLies = place >= tagHead && bytes.substr(place - tagHead, 3) == "ID3";
    bool first = true;
    while (place + headerSize <= bytes.size()) {
        auto frame = FrameAt(bytes, place);
        if (frame && facts.frames > 0 && !SameKind(*frame, facts.first) && !inStep)
            frame.reset(); // behind damage only what was heard before counts
        if (frame && frame->kbits == 0) {
            if (!inStep || freeSize == 0) {
                const std::uint32_t distance = FreeSize(bytes, place, *frame);
                freeSize = distance > frame->padding ? distance - frame->padding : 0;
            }
            frame->size = freeSize == 0 ? 0 : freeSize + frame->padding;
            if (!inStep && freeSize > 0 && !FreeFramesFollow(bytes, place, *frame, freeSize))
                frame->size = 0;
        }
        const bool whole = frame && frame->size > headerSize && place + frame->size <= bytes.size();
        const std::size_t next = whole ? place + frame->size : 0;
        const bool ends = whole && next + headerSize > bytes.size();
        const auto follower = whole && !ends ? FrameAt(bytes, next) : std::nullopt;
        if (!whole || (!inStep && !ends && !(follower && SameKind(*frame, *follower)))) {
            inStep = false;
            const std::size_t sync = bytes.find('\xFF', place + 1);
            place = sync == std::string_view::npos ? bytes.size() : sync;
            continue;
        }
        inStep = true;
        if (std::exchange(first, false)) {
            facts.start = place;
            if (IsTableOfFrames(bytes.substr(place), *frame)) {
                place = next;
                continue;
            }
        }
        if (facts.frames == 0)
            facts.first = *frame;
        else if (frame->kbits != last.kbits)
            facts.variable = true;
        last = *frame;
        ++facts.frames;
        facts.samples += frame->samples;
        facts.audioBytes += frame->size;
        place = next;
    }
    return facts;
}

std::int32_t DurationOfMpeg(std::string_view bytes)
{
    for (std::size_t place = SkipMpegTags(bytes); place + headerSize <= bytes.size(); ++place) {
        const auto frame = FrameAt(bytes, place);
        if (!frame)
            continue;
        if (frame->kbits == 0)
            return 1;
        const double seconds =
            static_cast<double>(bytes.size()) * 8 / 1000 / static_cast<double>(frame->kbits) - 1;
        if (seconds == 0)
            return 1;
        return static_cast<std::int32_t>(std::nearbyint(std::min(seconds, 1e9)));
    }
    return 1;
}

std::int32_t Mp3Duration(const Path& file)
{
    const auto bytes = ReadWholeFile(ResolvePath(file));
    return bytes ? DurationOfMpeg(*bytes) : 1;
}

} // namespace kestrova
