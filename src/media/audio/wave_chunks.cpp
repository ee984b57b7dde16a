#include "audio/wave_chunks.h"

#include "core/text.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace kestrova
{

namespace
{

/// A file of chunks without content would take long to walk and holds nothing.
constexpr int mostChunks = 10'000;
constexpr std::size_t riffSize = 12;
constexpr std::size_t chunkHead = 8;
/// Who writes into a pipe does not know the size and claims this or more.
constexpr std::uint64_t unknownSize = 0x7FFF0000;
constexpr std::size_t leastFormat = 16;
constexpr std::size_t mostFormat = 50;

/// How many, then their pairs of factors.
constexpr std::array<std::int16_t, 15> usualPredictors = {7,  256, 0, 512, -256, 0,   0,   192,
                                                          64, 240, 0, 460, -208, 392, -232};

template <class T> T NumberAt(std::span<const char> bytes, std::size_t place)
{
    T value{};
    if (place + sizeof value <= bytes.size())
        std::memcpy(&value, bytes.data() + place, sizeof value);
    return value;
}

bool ReadFormat(std::span<const char> block, WaveFacts& facts)
{
    if (block.size() < leastFormat)
        return false;
    facts.formatTag = NumberAt<std::uint16_t>(block, 0);
    facts.channels = NumberAt<std::uint16_t>(block, 2);
    facts.rate = NumberAt<std::uint32_t>(block, 4);
    facts.blockAlign = NumberAt<std::uint16_t>(block, 12);
    facts.bits = NumberAt<std::uint16_t>(block, 14);
    if (facts.formatTag == waveTagExtensible)
        facts.formatTag = NumberAt<std::uint16_t>(block, 24);
    else if (facts.formatTag != waveTagPcm)
        facts.samplesPerBlock = NumberAt<std::uint16_t>(block, 18);
    facts.usualPredictors =
        block.size() == mostFormat &&
        std::memcmp(&block[20], usualPredictors.data(), sizeof usualPredictors) == 0;
    if (facts.formatTag == waveTagPcm && facts.bits == 16)
        facts.blockAlign = 2 * facts.channels; // every decoder counts so, whatever stands there
    return facts.channels > 0 && facts.rate > 0 && facts.blockAlign > 0;
}

/// Samples of a channel that the data holds, a cut last block of ADPCM included as far as it goes.
std::uint64_t CodedFrames(const WaveFacts& facts)
{
    const auto align = static_cast<std::uint64_t>(facts.blockAlign);
    const auto channels = static_cast<std::uint64_t>(facts.channels);
    const std::uint64_t whole = facts.dataSize / align;
    if (facts.formatTag != waveTagMsAdpcm)
        return whole * static_cast<std::uint64_t>(std::max(facts.samplesPerBlock, 1));
    const std::uint64_t head = 7 * channels;
    const auto framesIn = [&](std::uint64_t bytes) {
        return bytes < head ? 0 : (bytes - head) * 2 / channels + 2;
    };
    const std::uint64_t full =
        std::min(framesIn(align), static_cast<std::uint64_t>(std::max(facts.samplesPerBlock, 0)));
    return whole * full + std::min(full, framesIn(facts.dataSize % align));
}

/// True when a chunk with a name in letters and a size that fits stands there.
bool ChunkFollows(const ByteSource& bytes, std::uint64_t place, std::uint64_t size)
{
    std::array<char, chunkHead> head{};
    if (size - place < chunkHead || bytes(place, head) != chunkHead)
        return false;
    return std::all_of(head.begin(), head.begin() + 4,
                       [](char byte) { return byte >= ' ' && byte <= '~'; }) &&
           NumberAt<std::uint32_t>(head, 4) <= size - place - chunkHead;
}

} // namespace

bool CanBeSound(const WaveFacts& facts)
{
    constexpr std::uint32_t highestRate = 1'000'000;
    constexpr int most = 64;
    return facts.rate > 0 && facts.rate <= highestRate && facts.channels > 0 &&
           facts.channels <= most && facts.bits >= 0 && facts.bits <= most;
}

std::uint64_t TrimmedFrames(std::uint64_t coded, int samplesPerBlock,
                            std::optional<std::uint32_t> fact)
{
    if (samplesPerBlock <= 1 || !fact || *fact >= coded ||
        coded - *fact >= static_cast<std::uint64_t>(samplesPerBlock))
        return coded;
    return *fact;
}

Result<WaveFacts> WalkWave(const ByteSource& bytes, std::uint64_t size)
{
    const Failure damaged{ErrorCode::Damaged, {}, {}};
    std::array<char, mostFormat> buffer{};
    if (bytes(0, std::span(buffer).first(riffSize)) != riffSize ||
        std::memcmp(buffer.data(), "RIFF", 4) != 0 || std::memcmp(&buffer[8], "WAVE", 4) != 0)
        return damaged;
    WaveFacts facts;
    bool format = false;
    bool data = false;
    std::uint64_t place = riffSize;
    for (int chunk = 0; chunk < mostChunks && place + chunkHead <= size; ++chunk) {
        if (bytes(place, std::span(buffer).first(chunkHead)) != chunkHead)
            break;
        const std::string_view name{buffer.data(), 4};
        const std::uint64_t claimed = NumberAt<std::uint32_t>(buffer, 4);
        const bool isData = name == "data" && !data;
        const bool isFormat = name == "fmt " && !format;
        const bool isFact = name == "fact";
        place += chunkHead;
        const std::uint64_t there = std::min(claimed, size - place);
        if (isFormat) {
            const std::size_t got =
                bytes(place, std::span(buffer).first(std::min<std::uint64_t>(there, mostFormat)));
            if (!ReadFormat(std::span(buffer).first(got), facts))
                return damaged;
            format = true;
        } else if (isFact && there >= 4) {
            if (bytes(place, std::span(buffer).first(4)) == 4)
                facts.fact = NumberAt<std::uint32_t>(buffer, 0);
        } else if (isData) {
            data = true;
            facts.dataStart = place;
            facts.dataSize = there;
            facts.missing = claimed < unknownSize ? claimed - there : 0;
            // A writer that was killed leaves 0 as the size, and the sound runs to the end.
            if (claimed == 0 && !ChunkFollows(bytes, place, size)) {
                facts.dataSize = size - place;
                break;
            }
        }
        place += there + (there & 1);
    }
    if (!format || !data)
        return damaged;
    facts.frames = TrimmedFrames(CodedFrames(facts), facts.samplesPerBlock, facts.fact);
    return facts;
}

Result<WaveFacts> WalkWave(const Path& file)
{
    platform::File handle;
    if (const auto failure = platform::File::OpenForRead(ResolvePath(file), handle))
        return MakeFailure(ErrorCode::CannotOpen, TextOf(file), failure);
    const auto bytes = [&](std::uint64_t place, std::span<char> into) {
        std::size_t got = 0;
        // What cannot be read counts as not there.
        (void)handle.ReadAt(place, std::as_writable_bytes(into), got);
        return got;
    };
    auto facts = WalkWave(bytes, handle.Facts().size);
    if (!facts)
        return MakeFailure(ErrorCode::Damaged, TextOf(file));
    return facts;
}

} // namespace kestrova
