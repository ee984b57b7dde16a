#include "conversion/audio_item.h"

#include "audio/mpeg_frames.h"
#include "audio/wave_chunks.h"
#include "audio/wave_converter.h"
#include "audio/wave_reader.h"
#include "conversion/mp3_tools.h"
#include "core/copying.h"
#include "core/file_kinds.h"
#include "core/look.h"
#include "core/text.h"
#include "words/common.h"
#include "words/conversion.h"

namespace kestrova
{

namespace
{

class PartProgress : public ProgressScope
{
public:
    explicit PartProgress(AudioItemView& view) : view_(view) {}
    void SetLabel(const std::string&) override {}
    void SetBar(std::uint64_t done, std::uint64_t total) override { view_.SetPart(done, total); }
    /// The tool has been silent for long, so it no longer has the right to finish its file.
    void AllowStop() override { silent_ = true; }
    bool Step() override
    {
        const auto& end = silent_ ? view_.endConversion : view_.endTool;
        return !end || !end();
    }

private:
    bool silent_ = false;
    AudioItemView& view_;
};

/// One file's steps. Temporary files lie in the target folder under names that nobody sees.
class ItemRun
{
public:
    ItemRun(const Tools& tools, const Path& file, const AudioTarget& target, AudioItemView& view)
        : tools_(tools), file_(file), current_(file), target_(target), view_(view), progress_(view),
          state_(&progress_)
    {
        state_.quiet = true;
        // A thread of its own may not speak to anybody.
        state_.tell = [this](const std::string& text) { outcome_.remarks.push_back(text); };
    }
    ItemRun(const ItemRun&) = delete;
    ItemRun& operator=(const ItemRun&) = delete;

    AudioOutcome Go(const AudioPlan& plan)
    {
        mode_ = plan.mode;
        if (!plan.remark.empty())
            outcome_.remarks.push_back(plan.remark);
        if (plan.mp3 && !Decode())
            return std::move(outcome_);
        outcome_.step = mode_;
        outcome_.name =
            StripExtension(file_.filename().native()) +
            std::string{mode_ == encodeStep ? OnDisk::Mp3Extension : OnDisk::WavExtension};
        if (mode_ < 1)
            TakeAsItIs();
        else if (mode_ == encodeStep)
            Encode();
        else if (Convert(mode_, target_.text))
            outcome_.made = std::move(temporary_);
        view_.steps += 1;
        return std::move(outcome_);
    }

private:
    [[nodiscard]] std::string Name() const { return TextOf(file_.filename()); }
    [[nodiscard]] std::string Quoted() const { return "\"" + Name() + "\""; }
    bool Fail(int step, ErrorCode code, std::string sentence)
    {
        outcome_.status = Failure{code, TextOf(file_), {}, {}, std::move(sentence)};
        outcome_.step = step;
        return false;
    }
    /// Why, and below it what helps.
    static std::string AllOf(const Failure& failure)
    {
        std::string words = failure.sentence;
        for (const std::string& beside : {failure.reason, failure.details})
            words += (beside.empty() ? "" : std::string{lineBreak}) + beside;
        return words;
    }
    [[nodiscard]] StagedPlace NewTemporary() const
    {
        return StagedPlace{target_.folder / file_.filename()};
    }
    void Use(StagedPlace place)
    {
        current_ = place.Staged();
        temporary_ = std::move(place);
    }

    bool Decode()
    {
        view_.Show(GetMsg(Msg::AudioDecoding, {Quoted()}));
        StagedPlace wave = NewTemporary();
        if (const auto decoded = DecodeMp3(tools_, file_, wave.Staged(), state_); !decoded)
            return Fail(decodeStep, decoded.Error().code,
                        GetMsg(Msg::ErrorDecoding, {Name()}) + AllOf(decoded.Error()));
        view_.steps += 1;
        Use(std::move(wave));
        mode_ = ClassifyWav(current_, target_.kind).mode;
        if (mode_ == -1) {
            if (!Convert(pcmToStandard, GetMsg(Msg::StandardForm)))
                return false;
            mode_ = toAdpcm;
        }
        return true;
    }

    /// From `current_` to a new temporary file, which it is then.
    bool Convert(int mode, const std::string& form)
    {
        view_.Show(GetMsg(Msg::AudioConverting, {Quoted()}) + form);
        StagedPlace made = NewTemporary();
        const Status status =
            WavConverter(current_, made.Staged(), mode, [&](std::uint64_t done, std::uint64_t all) {
                view_.SetPart(done, all);
                return !view_.endConversion || !view_.endConversion();
            });
        view_.SetPart(0, 0);
        if (!status)
            return Fail(mode, status.Error().code, status.Error().reason);
        Use(std::move(made));
        return true;
    }

    void Encode()
    {
        WavHeader header;
        if (!ReadWavHeader(current_, header)) {
            const int inner = header.bitsPerSample == 4 ? adpcmToStandard : pcmToStandard;
            if (!Convert(inner, GetMsg(Msg::PcmStandardForm)))
                return;
            view_.steps += 1;
        }
        view_.Show(GetMsg(Msg::AudioEncoding) + Name());
        StagedPlace made = NewTemporary();
        if (const auto encoded = EncodeMp3(tools_, target_.mp3, current_, made.Staged(), state_);
            !encoded)
            Fail(encodeStep, encoded.Error().code,
                 GetMsg(Msg::ErrorEncoding) + std::string{lineBreak} + AllOf(encoded.Error()));
        else
            outcome_.made = std::move(made);
    }

    void TakeAsItIs()
    {
        if (temporary_) {
            outcome_.made = std::move(temporary_);
            return;
        }
        if (IsSameFolder(current_.parent_path(), target_.folder)) {
            outcome_.stands = true;
            return;
        }
        StagedPlace copy = NewTemporary();
        if (const auto status = CopyFileOver(current_, copy.Staged()); !status)
            Fail(mode_, status.Error().code, status.Error().reason);
        else
            outcome_.made = std::move(copy);
    }

    const Tools tools_;
    Path file_;
    Path current_;
    std::optional<StagedPlace> temporary_; ///< of `current_` when that is not the file itself
    const AudioTarget& target_;
    AudioItemView& view_;
    PartProgress progress_;
    ToolProgressState state_;
    int mode_ = 0;
    AudioOutcome outcome_;
};

/// The forms are told apart by rate, channels and bits; the game reads no other coding of them.
bool IsOfTheGame(const WaveClass& found)
{
    return found.header.formatTag == (found.kind == AudioKind::Adpcm ? waveTagMsAdpcm : waveTagPcm);
}

/// What a file that no way leads from really is, where the description cannot tell.
std::optional<std::string> WhyNot(const Path& file)
{
    if (const auto facts = WalkWave(file))
        return CanBeSound(*facts) ? std::optional<std::string>{} : GetMsg(Msg::WaveHeaderDamaged);
    const auto bytes = ReadWholeFile(ResolvePath(file));
    if (bytes && ScanMpeg(*bytes).frames > 0)
        return GetMsg(Msg::Mp3CalledWave);
    return {};
}

} // namespace

std::string AudioTargetText(AudioKind kind, const Mp3Settings& settings)
{
    switch (kind) {
    case AudioKind::Adpcm:
        return GetMsg(Msg::AdpcmForm);
    case AudioKind::Mono:
        return GetMsg(Msg::MonoForm);
    case AudioKind::Mp3:
        return GetMsg(Msg::Mp3Form, {std::to_string(settings.bitRate)}) +
               GetMsg(settings.channels == 1 ? Msg::Mp3Mono : Msg::Mp3Stereo) +
               (settings.frequency == 0 ? "" : " " + std::to_string(settings.frequency) + " ");
    default:
        return GetMsg(Msg::StandardForm);
    }
}

AudioPlan PlanAudioFile(const Path& file, AudioKind target)
{
    AudioPlan plan;
    plan.mp3 = EndsWithName(file.filename().native(), OnDisk::Mp3Extension);
    if (plan.mp3) {
        plan.steps = 2;
        const auto bytes = ReadWholeFile(ResolvePath(file));
        // A file that is not there or cannot be read is the decoder's to tell.
        if (bytes && ScanMpeg(*bytes).frames == 0) {
            plan.mode = -1;
            plan.description = GetMsg(WalkWave(file) ? Msg::WaveCalledMp3 : Msg::NoMp3Sound);
        }
        return plan;
    }
    const WaveClass found = ClassifyWav(file, target);
    plan.mode = found.mode;
    plan.description = found.description;
    if (plan.mode == 0 && !IsOfTheGame(found))
        plan.mode = target == AudioKind::Adpcm  ? toAdpcm
                    : target == AudioKind::Mono ? toMono
                                                : pcmToStandard;
    // A header may say anything; what is behind it must be a sound.
    if (plan.mode > 0 && !WaveReader::Open(file))
        plan.mode = -1;
    if (const auto facts = WalkWave(file); plan.mode > 0 && facts && facts->missing > 0)
        plan.remark =
            GetMsg(Msg::AudioCutWave, {TextOf(file.filename()), std::to_string(facts->dataSize),
                                       std::to_string(facts->dataSize + facts->missing)});
    if (plan.mode == -1) {
        const auto known = WhyNot(file);
        plan.description = known.value_or(plan.description);
        if (!known)
            plan.reason = GetMsg(found.kind == AudioKind::Unknown || !WaveReader::Open(file)
                                     ? Msg::AudioKindUnknown
                                     : Msg::AudioFirstToStandard);
    }
    if (plan.mode > 0)
        plan.steps = plan.mode == encodeStep ? 2 : 1;
    return plan;
}

void AudioItemView::Show(std::string text)
{
    const std::lock_guard lock{mutex_};
    texts_.push_back(std::move(text));
}

std::vector<std::string> AudioItemView::TakeTexts()
{
    const std::lock_guard lock{mutex_};
    return std::exchange(texts_, {});
}

void AudioItemView::SetPart(std::uint64_t done, std::uint64_t total)
{
    partDone = done;
    partTotal = total;
}

AudioOutcome ConvertAudioFile(const Tools& tools, const Path& file, const AudioPlan& plan,
                              const AudioTarget& target, AudioItemView& view)
{
    return ItemRun{tools, file, target, view}.Go(plan);
}

} // namespace kestrova
