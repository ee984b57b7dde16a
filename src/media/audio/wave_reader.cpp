#include "audio/wave_reader.h"

#include "audio/wave_chunks.h"

#include <algorithm>
#include <mutex>
#include <sndfile.h>

namespace kestrova
{

namespace
{

void Close(void* handle)
{
    sf_close(static_cast<SNDFILE*>(handle)); // it was only read
}

int BitsOf(int subtype)
{
    switch (subtype) {
    case SF_FORMAT_PCM_24:
        return 24;
    case SF_FORMAT_PCM_32:
    case SF_FORMAT_FLOAT:
    case SF_FORMAT_DOUBLE:
        return 32;
    default:
        return 16; // fewer bits fit, and so does what is coded
    }
}

/// Hz. What tells of other rates is damaged: its few bytes would become hours, or nothing at all.
constexpr std::uint32_t leastRate = 1000;
constexpr std::uint32_t mostRate = 768'000;

/// Why the last opening failed stands in one place for the whole library.
std::mutex& OpeningMutex()
{
    static std::mutex mutex;
    return mutex;
}

} // namespace

WaveReader::WaveReader(WaveReader&&) noexcept = default;
WaveReader::~WaveReader() = default;

Result<WaveReader> WaveReader::Open(const Path& file)
{
    const Path place = ResolvePath(file);
    const auto facts = WalkWave(place);
    if (!facts)
        return facts.Error();
    if (facts->rate < leastRate || facts->rate > mostRate)
        return Failure{ErrorCode::Damaged, TextOf(file), {}};
    SF_INFO info{};
    WaveReader reader;
    if ((reader.blocks_ = MsAdpcmReader::Open(place, *facts))) {
        reader.channels_ = facts->channels;
        reader.rate_ = static_cast<int>(facts->rate);
        reader.bits_ = 16;
        reader.frames_ = reader.left_ = facts->frames;
        return reader;
    }
    std::string words;
    {
        const std::lock_guard lock{OpeningMutex()};
        reader.handle_ = {sf_open(place.c_str(), SFM_READ, &info), Close};
        if (reader.handle_ == nullptr)
            words = sf_strerror(nullptr);
    }
    const int form = info.format & SF_FORMAT_TYPEMASK;
    const bool wave = form == SF_FORMAT_WAV || form == SF_FORMAT_WAVEX;
    // Sound behind a size of 0 is there, but not for the library.
    const bool unheard = info.frames == 0 && facts->frames > 0;
    if (reader.handle_ == nullptr || !wave || info.channels < 1 || info.samplerate < 1 ||
        info.frames < 0 || unheard)
        return Failure{ErrorCode::Damaged, TextOf(file), words};
    reader.channels_ = info.channels;
    reader.rate_ = info.samplerate;
    reader.bits_ = BitsOf(info.format & SF_FORMAT_SUBMASK);
    reader.frames_ =
        TrimmedFrames(static_cast<std::uint64_t>(info.frames), facts->samplesPerBlock, facts->fact);
    reader.left_ = reader.frames_;
    return reader;
}

std::size_t WaveReader::Read(std::span<std::int16_t> into)
{
    const auto wanted =
        std::min<std::uint64_t>(left_, into.size() / static_cast<std::size_t>(channels_));
    if (blocks_) {
        const std::size_t got = blocks_->Read(
            into.first(static_cast<std::size_t>(wanted) * static_cast<std::size_t>(channels_)));
        left_ -= got;
        return got;
    }
    const sf_count_t got = sf_readf_short(static_cast<SNDFILE*>(handle_.get()), into.data(),
                                          static_cast<sf_count_t>(wanted));
    left_ -= static_cast<std::uint64_t>(got);
    return static_cast<std::size_t>(got);
}

std::size_t WaveReader::Read(std::span<float> into)
{
    const auto wanted =
        std::min<std::uint64_t>(left_, into.size() / static_cast<std::size_t>(channels_));
    if (blocks_) {
        std::vector<std::int16_t> samples(into.size());
        const std::size_t got = Read(std::span(samples));
        for (std::size_t i = 0; i < got * static_cast<std::size_t>(channels_); ++i)
            into[i] = static_cast<float>(samples[i]) / 32768.0F;
        return got;
    }
    const sf_count_t got = sf_readf_float(static_cast<SNDFILE*>(handle_.get()), into.data(),
                                          static_cast<sf_count_t>(wanted));
    left_ -= static_cast<std::uint64_t>(got);
    return static_cast<std::size_t>(got);
}

} // namespace kestrova
