#include "conversion/audio_batch.h"

#include "core/copying.h"
#include "core/file_kinds.h"
#include "core/look.h"
#include "core/ordered_jobs.h"
#include "core/parallel.h"
#include "core/text.h"
#include "session/telling.h"
#include "words/conversion.h"
#include "words/session.h"

#include <algorithm>
#include <set>

namespace kestrova
{

namespace
{

constexpr std::chrono::milliseconds pollSlice{30};

/// How a run ended, as the window's last line has it.
Failure ConversionStopped()
{
    return InWords(ErrorCode::Stopped, GetMsg(Msg::AudioCancelled));
}

Message StepName(int step)
{
    switch (step) {
    case decodeStep:
        return Msg::StepDecoding;
    case toAdpcm:
        return Msg::StepToAdpcm;
    case toMono:
        return Msg::StepToMono;
    case encodeStep:
        return Msg::StepEncoding;
    default:
        return Msg::StepToStandard;
    }
}

} // namespace

/// What the owner and the workers both look at.
struct AudioBatch::Shared {
    explicit Shared(std::size_t count) : views(count), outcomes(count) {}
    std::vector<AudioItemView> views;
    std::vector<AudioOutcome> outcomes;
    std::atomic<bool> stop{false};  ///< pressed by the person
    std::atomic<bool> ended{false}; ///< nobody waits for outcomes any more
    std::atomic<std::size_t> head{0};
};

AudioBatch::AudioBatch(Host& host, const SoundConverter& converter, std::vector<Path> files,
                       const Path& folder, AudioKind target)
    : host_(host), tools_(converter.tools),
      files_(std::move(files)), target_{ResolvePath(folder), target, converter.mp3Settings,
                                        AudioTargetText(target, converter.mp3Settings)},
      plans_(files_.size()), shared_(std::make_unique<Shared>(files_.size())),
      stemsMeet_(StemsMeet())
{
}

AudioBatch::~AudioBatch() = default;

bool AudioBatch::Stopped()
{
    if (!window_->Step())
        shared_->stop = true;
    return shared_->stop;
}

Status AudioBatch::Run()
{
    window_ = host_.BeginProgress(ProgressWindow::Audio, GetMsg(Msg::AudioPreparing));
    window_->AllowStop();
    Status done = LookAtAll();
    if (done)
        done = RefuseToReplace();
    if (done)
        done = ConvertAll();
    window_->SetLabel(done ? GetMsg(Msg::AudioTerminated) : done.Error().sentence);
    window_.reset();
    return done;
}

Status AudioBatch::LookAtAll()
{
    const bool all = RunOnAllCores(
        files_.size(),
        [&](std::size_t index) { plans_[index] = PlanAudioFile(files_[index], target_.kind); },
        [&] { return !Stopped(); });
    if (!all)
        return ConversionStopped();
    for (std::size_t i = 0; i < files_.size(); ++i) {
        if (plans_[i].mode == -1) {
            if (passesOver_ == PassOver::Always)
                continue;
            const std::string words = GetMsg(Msg::AudioCannotConvert, {TextOf(files_[i].filename()),
                                                                       plans_[i].description}) +
                                      target_.text + "]";
            // The window's own words, with or without the question behind them.
            host_.Tell(Tone::Error, words, plans_[i].reason);
            if (PassesOver(i))
                continue;
            return InWords(ErrorCode::Refused, words);
        }
        steps_ += static_cast<std::uint64_t>(plans_[i].steps);
    }
    return {};
}

bool AudioBatch::PassesOver(std::size_t index)
{
    const std::string breaks = std::string{lineBreak} + std::string{lineBreak};
    return passesOver_ == PassOver::WhenAsked &&
           host_.AskYesNo(GetMsg(Msg::AudioAskGoOn, {TextOf(files_[index].filename()) + "' : " +
                                                     GetMsg(Msg::AudioStaysAsItIs) + breaks}));
}

/// Refuses, in the window's own words, when a result would take the place of a file that is
/// protected.
Status AudioBatch::RefuseToReplace()
{
    const auto unknown = [&](const Failure& failure) {
        TellFolderNotRead(host_, failure);
        return InWords(ErrorCode::Refused, GetMsg(Msg::FolderNotRead, {failure.subject}));
    };
    std::vector<platform::FileFacts> originals;
    for (const Path& file : originals_) {
        const auto facts = LookAt(file);
        if (!facts)
            return unknown(facts.Error());
        originals.push_back(*facts);
    }
    for (std::size_t i = 0; i < files_.size() && !originals.empty(); ++i) {
        if (plans_[i].mode == -1 || (plans_[i].mode == 0 && !plans_[i].mp3))
            continue; // it stays what it is
        const auto place = LookAt(target_.folder / ResultName(i));
        if (!place)
            return unknown(place.Error());
        const auto own = std::find_if(originals.begin(), originals.end(), [&](const auto& facts) {
            return IsSameThing(*place, facts);
        });
        if (own == originals.end())
            continue;
        const auto number = static_cast<std::size_t>(own - originals.begin());
        const std::string words =
            GetMsg(Msg::AudioOntoItself, {TextOf(originals_[number].filename())});
        host_.Tell(Tone::Error, words);
        return InWords(ErrorCode::Refused, words);
    }
    return {};
}

std::string AudioBatch::ResultName(std::size_t index) const
{
    return StripExtension(files_[index].filename().native()) +
           std::string{target_.kind == AudioKind::Mp3 ? OnDisk::Mp3Extension
                                                      : OnDisk::WavExtension};
}

/// True when the order of the list matters: two files become one, or one becomes what another is.
bool AudioBatch::StemsMeet() const
{
    std::set<std::string> stems;
    return !std::all_of(files_.begin(), files_.end(), [&](const Path& file) {
        return stems.insert(FoldCase(StripExtension(file.filename().native()))).second;
    });
}

Status AudioBatch::ConvertAll()
{
    Shared& shared = *shared_;
    ClearLeftoversOfKilled(target_.folder);
    for (std::size_t i = 0; i < files_.size(); ++i) {
        shared.views[i].endTool = [&shared, i, atOnce = host_.WorksUnattended()] {
            return shared.ended || (shared.stop && (atOnce || i != shared.head));
        };
        shared.views[i].endConversion = [&shared] { return shared.ended || shared.stop; };
    }
    const std::size_t ahead = stemsMeet_ ? 0 : 2 * OrderedJobs::Cores();
    OrderedJobs jobs{files_.size(), ahead, [&](std::size_t i) {
                         if (plans_[i].mode != -1 && !shared.views[i].endTool())
                             shared.outcomes[i] = ConvertAudioFile(tools_, files_[i], plans_[i],
                                                                   target_, shared.views[i]);
                     }};
    Status going;
    for (std::size_t i = 0; i < files_.size() && going; ++i) {
        shared.head = i;
        if (Stopped()) {
            going = ConversionStopped();
            break;
        }
        do {
            ShowProgress(i);
            (void)
                Stopped(); // it takes effect at the next file; our own conversions hear it at once
        } while (!jobs.WaitFor(i, pollSlice));
        ShowProgress(i);
        if (plans_[i].mode == -1)
            continue;
        going = TakeOutcome(i, std::move(shared.outcomes[i]));
        done_ += static_cast<std::uint64_t>(shared.views[i].steps.load());
    }
    shared.ended = true;
    return going;
}

void AudioBatch::ShowProgress(std::size_t index)
{
    AudioItemView& view = shared_->views[index];
    const std::string prefix =
        "[" + std::to_string(index + 1) + "\\" + std::to_string(files_.size());
    for (const std::string& text : view.TakeTexts())
        window_->SetLabel(prefix + text);
    const std::uint64_t total = view.partTotal;
    window_->SetPart(std::min<std::uint64_t>(view.partDone, total), total);
    const std::uint64_t done = done_ + static_cast<std::uint64_t>(view.steps.load());
    window_->SetBar(std::min(done, steps_), steps_);
}

Status AudioBatch::TakeOutcome(std::size_t index, AudioOutcome outcome)
{
    for (const std::string& remark : outcome.remarks)
        host_.Tell(Tone::Plain, remark);
    if (!outcome.status) {
        const Failure& failure = outcome.status.Error();
        if (failure.code == ErrorCode::Stopped)
            return ConversionStopped();
        if (auto goesOn = AskToGoOn(index, failure.sentence, outcome.step); !goesOn)
            return goesOn;
        // Only what failed to be encoded is asked about once more, for the file that is missing.
        if (outcome.step != encodeStep)
            return {};
    }
    const Path place = outcome.name.empty() ? Path{} : target_.folder / outcome.name;
    if (outcome.stands && EqualNames(outcome.name, files_[index].filename().native())) {
        converted_.push_back({files_[index], files_[index]});
        return {};
    }
    std::string reason;
    if (outcome.stands) {
        // The file itself takes its new name.
        const auto moved = MoveFileOver(files_[index], place);
        if (!moved)
            reason = moved.Error().reason;
    } else if (outcome.made) {
        const auto moved = outcome.made->MoveTo(place);
        if (!moved)
            reason = moved.Error().reason;
    }
    if (outcome.status && reason.empty() && FileExists(place)) {
        const Path result = ResolvePath(place); // an existing spelling stays
        if (stemsMeet_)
            LeaveOutReplaced(index, result);
        converted_.push_back({files_[index], result});
        return {};
    }
    return AskToGoOn(index, GetMsg(Msg::AudioNotCreated) + (reason.empty() ? "" : ": ") + reason,
                     outcome.step);
}

/// A file whose result gave way to a later one's did not come through.
void AudioBatch::LeaveOutReplaced(std::size_t index, const Path& place)
{
    const auto same = std::find_if(converted_.begin(), converted_.end(), [&](const Pair& pair) {
        return EqualNames(pair.result.native(), place.native());
    });
    if (same == converted_.end())
        return;
    host_.Tell(Tone::Warning, GetMsg(Msg::AudioSameName, {TextOf(same->source.filename()),
                                                          TextOf(files_[index].filename()),
                                                          TextOf(same->result.filename())}));
    converted_.erase(same);
}

Status AudioBatch::AskToGoOn(std::size_t index, std::string error, int step)
{
    error.resize(std::min(error.find('\0'), error.size()));
    const std::string name = TextOf(files_[index].filename());
    const std::string breaks = std::string{lineBreak} + std::string{lineBreak};
    if (host_.AskYesNo(GetMsg(Msg::AudioAskGoOn, {name + "' : " + error + breaks})))
        return {};
    return InWords(ErrorCode::NotDone,
                   GetMsg(Msg::AudioErrorAt, {Shown(StepName(step)), name}) + error);
}

Failure ConversionFailed(Message words, Failure failure)
{
    failure.sentence = GetMsg(words) + failure.sentence;
    return failure;
}

Status DeleteConverted(const AudioBatch& batch)
{
    std::set<Path> folders;
    for (const AudioBatch::Pair& pair : batch.Converted()) {
        if (EqualNames(pair.source.native(), pair.result.native()))
            continue;
        platform::File handle;
        auto failure = platform::File::OpenForRead(pair.result, handle);
        if (!failure)
            failure = handle.Sync();
        if (failure)
            return MakeFailure(ErrorCode::CannotWrite, TextOf(pair.result), failure);
        folders.insert(pair.result.parent_path());
    }
    for (const Path& folder : folders)
        if (auto status = FlushFolder(folder); !status)
            return status;
    for (const AudioBatch::Pair& pair : batch.Converted())
        if (!EqualNames(pair.source.native(), pair.result.native()))
            // As it is spelled: another one's spelling may be a sound that did not come through.
            if (const auto failure = platform::Unlink(pair.source))
                return MakeFailure(ErrorCode::CannotDelete, TextOf(pair.source), failure);
    return {};
}

} // namespace kestrova
