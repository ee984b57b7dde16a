#include "audio/wave_converter.h"

#include "audio/ms_adpcm_writer.h"
#include "audio/sound_mix.h"
#include "audio/wave_chunks.h"
#include "audio/wave_reader.h"
#include "core/staged_file.h"
#include "words/audio.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <memory>
#include <optional>
#include <soxr.h>

namespace kestrova
{

namespace
{

constexpr std::size_t chunkFrames = 32768;

Failure NotConverted(ErrorCode code, const Path& file, std::string words)
{
    return Failure{code, TextOf(file), std::move(words)};
}

/// 44 bytes: the plain header of 16-bit PCM.
std::string PcmHeader(const WaveForm& form, std::uint64_t frames)
{
    const auto channels = static_cast<std::uint64_t>(form.channels);
    const auto rate = static_cast<std::uint64_t>(form.rate);
    const std::uint64_t size = frames * channels * 2;
    std::string bytes;
    const auto number = [&](std::uint64_t value, std::size_t width) {
        bytes.append(reinterpret_cast<const char*>(&value), width);
    };
    bytes += "RIFF";
    number(36 + size, 4);
    bytes += "WAVEfmt ";
    number(16, 4);
    number(waveTagPcm, 2);
    number(channels, 2);
    number(rate, 4);
    number(rate * channels * 2, 4);
    number(channels * 2, 2);
    number(16, 2);
    bytes += "data";
    number(size, 4);
    return bytes;
}

/// A wave of known length that is written piece by piece.
class WaveWriter
{
public:
    WaveWriter(const Path& target, const WaveForm& form, std::uint64_t frames)
        : file_(target), form_(form), left_(frames), frames_(frames)
    {
        if (form.adpcm)
            encoder_.emplace(form.channels, form.rate);
    }
    Status Open()
    {
        if (auto status = file_.Open(); !status)
            return status;
        return file_.Write(encoder_ ? encoder_->Header(frames_) : PcmHeader(form_, frames_));
    }
    /// What goes beyond the length is left out.
    Status Write(std::span<const std::int16_t> samples)
    {
        const auto channels = static_cast<std::size_t>(form_.channels);
        const auto frames = std::min<std::uint64_t>(left_, samples.size() / channels);
        samples = samples.first(static_cast<std::size_t>(frames) * channels);
        left_ -= frames;
        if (!encoder_)
            return file_.Write(
                {reinterpret_cast<const char*>(samples.data()), samples.size_bytes()});
        coded_.clear();
        encoder_->Encode(samples, coded_);
        return file_.Write(coded_);
    }
    [[nodiscard]] std::uint64_t Left() const { return left_; }
    Status Finish()
    {
        if (!encoder_)
            return {};
        coded_.clear();
        encoder_->Finish(coded_);
        return file_.Write(coded_);
    }
    StagedFile& File() { return file_; }

private:
    StagedFile file_;
    WaveForm form_;
    std::uint64_t left_;
    std::uint64_t frames_;
    std::optional<MsAdpcmEncoder> encoder_;
    std::string coded_;
};

class Resampler
{
public:
    Resampler(int from, int to, int channels) : channels_(static_cast<std::size_t>(channels))
    {
        const soxr_io_spec_t io = soxr_io_spec(SOXR_FLOAT32_I, SOXR_FLOAT32_I);
        const soxr_quality_spec_t quality = soxr_quality_spec(SOXR_HQ, 0);
        soxr_error_t error = nullptr;
        engine_ = {
            soxr_create(from, to, static_cast<unsigned>(channels), &error, &io, &quality, nullptr),
            soxr_delete};
        ratio_ = static_cast<double>(to) / from;
    }
    [[nodiscard]] bool Works() const { return engine_ != nullptr; }
    /// An empty source is the end.
    bool Process(std::span<const float> source, std::vector<float>& target)
    {
        const std::size_t frames = source.size() / channels_;
        target.resize((static_cast<std::size_t>(static_cast<double>(frames) * ratio_) + 4096) *
                      channels_);
        std::size_t made = 0;
        for (std::size_t taken = 0;;) {
            std::size_t in = 0;
            std::size_t out = 0;
            const float* from = source.empty() ? nullptr : source.data() + taken * channels_;
            if (soxr_process(engine_.get(), from, frames - taken, &in,
                             target.data() + made * channels_, target.size() / channels_ - made,
                             &out) != nullptr)
                return false;
            taken += in;
            made += out;
            if (taken == frames && (out == 0 || made < target.size() / channels_))
                break;
            if (made == target.size() / channels_)
                target.resize(target.size() * 2);
        }
        target.resize(made * channels_);
        return true;
    }

private:
    std::unique_ptr<struct soxr, void (*)(soxr_t)> engine_{nullptr, soxr_delete};
    std::size_t channels_;
    double ratio_ = 1;
};

/// One wave on its way into another form.
class Conversion
{
public:
    Conversion(WaveReader reader, const WaveForm& form, const ConvertProgress& progress)
        : reader_(std::move(reader)), form_(form), progress_(progress)
    {
        const auto to = static_cast<std::uint64_t>(form.rate);
        const auto from = static_cast<std::uint64_t>(reader_.Rate());
        target_ = (reader_.Frames() * to + from / 2) / from;
    }
    [[nodiscard]] std::uint64_t TargetFrames() const { return target_; }

    /// Whole numbers that stay whole numbers are taken as they are.
    [[nodiscard]] bool IsExact() const
    {
        return reader_.Rate() == form_.rate && reader_.Bits() <= 16 &&
               (reader_.Channels() == form_.channels || reader_.Channels() == 1);
    }
    Status RunExact(WaveWriter& writer)
    {
        std::vector<std::int16_t> samples(chunkFrames *
                                          static_cast<std::size_t>(reader_.Channels()));
        std::vector<std::int16_t> doubled;
        while (const std::size_t got = reader_.Read(std::span(samples))) {
            std::span<const std::int16_t> piece{samples.data(),
                                                got * static_cast<std::size_t>(reader_.Channels())};
            if (reader_.Channels() != form_.channels) {
                doubled.clear();
                for (const std::int16_t sample : piece)
                    doubled.insert(doubled.end(), 2, sample);
                piece = doubled;
            }
            if (auto status = Put(writer, piece, got); !status)
                return status;
        }
        return writer.Finish();
    }
    /// `peak` comes back as the loudest sample there was before the gain.
    Status RunMixed(WaveWriter& writer, float gain, float& peak)
    {
        const ChannelMix mix{reader_.Channels(), form_.channels};
        std::optional<Resampler> resampler;
        if (reader_.Rate() != form_.rate) {
            resampler.emplace(reader_.Rate(), form_.rate, form_.channels);
            if (!resampler->Works())
                return Failure{ErrorCode::NoSpace, {}, {}};
        }
        Dither dither{static_cast<std::size_t>(form_.channels)};
        std::vector<float> samples(chunkFrames * static_cast<std::size_t>(reader_.Channels()));
        std::vector<float> mixed;
        std::vector<float> resampled;
        std::vector<std::int16_t> rounded;
        for (std::size_t got = 1; got > 0;) {
            got = reader_.Read(std::span(samples));
            std::span<const float> piece{samples.data(),
                                         got * static_cast<std::size_t>(reader_.Channels())};
            if (!mix.IsPlain()) {
                mix.Mix(piece, mixed);
                piece = mixed;
            }
            if (resampler) {
                if (!resampler->Process(piece, resampled))
                    return Failure{ErrorCode::NoSpace, {}, {}};
                piece = resampled;
            }
            dither.Round(piece, gain, rounded);
            if (auto status = Put(writer, rounded, got); !status)
                return status;
        }
        peak = dither.Peak();
        // A resampler may end a sample early.
        const auto missing = std::min<std::uint64_t>(writer.Left(), 16);
        rounded.assign(static_cast<std::size_t>(missing) * static_cast<std::size_t>(form_.channels),
                       0);
        if (auto status = writer.Write(rounded); !status)
            return status;
        return writer.Finish();
    }

private:
    Status Put(WaveWriter& writer, std::span<const std::int16_t> samples, std::size_t frames)
    {
        if (auto status = writer.Write(samples); !status)
            return status;
        done_ += frames;
        if (progress_ && !progress_(std::min(done_, reader_.Frames()), reader_.Frames()))
            return Failure{ErrorCode::Stopped, {}, {}};
        return {};
    }

    WaveReader reader_;
    WaveForm form_;
    const ConvertProgress& progress_;
    std::uint64_t target_ = 0;
    std::uint64_t done_ = 0;
};

/// One try; `peak` above 1 asks for another that is turned down.
Status TryConversion(const Path& source, const Path& destination, const WaveForm& form,
                     const ConvertProgress& progress, float gain, float& peak)
{
    auto reader = WaveReader::Open(source);
    if (!reader)
        return reader.Error();
    Conversion conversion{std::move(*reader), form, progress};
    const std::uint64_t frames = conversion.TargetFrames();
    const std::uint64_t most = std::numeric_limits<std::uint32_t>::max() / 4 - 4096;
    if (frames > most)
        return NotConverted(ErrorCode::Refused, source, GetMsg(Msg::WaveTooLong));
    WaveWriter writer{destination, form, frames};
    Status status = writer.Open();
    if (status)
        status = conversion.IsExact() ? conversion.RunExact(writer)
                                      : conversion.RunMixed(writer, gain, peak);
    if (!status)
        return status;
    if (peak * gain > 1)
        return {}; // too loud, so this try is thrown away
    if (writer.Left() > 0)
        return NotConverted(ErrorCode::Damaged, source, GetMsg(Msg::WaveBreaksOff));
    if (const auto failure = writer.File().Handle().Close())
        return MakeFailure(ErrorCode::CannotWrite, TextOf(destination), failure);
    if (!HoldsWave(writer.File().StagedPath(), form, frames))
        return NotConverted(ErrorCode::Differs, destination, GetMsg(Msg::WaveNotWhole));
    return writer.File().Commit(false);
}

} // namespace

WaveForm FormOfMode(int mode)
{
    if (mode == toAdpcm)
        return {44100, 2, true};
    return mode == toMono ? WaveForm{22050, 1, false} : WaveForm{};
}

bool HoldsWave(const Path& file, const WaveForm& form, std::uint64_t frames)
{
    const auto facts = WalkWave(file);
    return facts && facts->formatTag == (form.adpcm ? waveTagMsAdpcm : waveTagPcm) &&
           facts->channels == form.channels &&
           facts->rate == static_cast<std::uint32_t>(form.rate) &&
           facts->bits == (form.adpcm ? 4 : 16) && facts->frames == frames;
}

Status WavConverter(const Path& source, const Path& destination, int mode,
                    const ConvertProgress& progress)
{
    const WaveForm form = FormOfMode(mode);
    float peak = 0;
    Status status = TryConversion(source, destination, form, progress, 1, peak);
    if (status && peak > 1) {
        // A little below the limit, since the noise of the rounding comes on top.
        const float gain = 0.9999F / peak;
        status = TryConversion(source, destination, form, progress, gain, peak);
    }
    if (status || !status.Error().reason.empty() || status.Error().code == ErrorCode::Stopped)
        return status;
    Failure failure = status.Error();
    failure.reason =
        GetMsg(failure.code == ErrorCode::Damaged ? Msg::WaveNotReadable : Msg::WaveNotWritten);
    return failure;
}

} // namespace kestrova
