#include "conversion/audio_batch.h"

#include "core/copying.h"
#include "core/file_kinds.h"
#include "core/look.h"
#include "core/ordered_jobs.h"
#include "core/parallel.h"
#include "session/operation.h"
#include "session/telling.h"
#include "words/conversion.h"
#include "words/session.h"

#include <algorithm>
#include <set>

namespace kestrova
{

namespace
{

constexpr std::chrono::milliseconds slice{30};

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

AudioBatch::AudioBatch(Session& session, std::vector<Path> files, const Path& folder,
                       AudioKind target)
    : session_(session),
      files_(std::move(files)), target_{ResolvePath(folder), target, session.mp3Settings,
                                        AudioTargetText(target, session.mp3Settings)},
      plans_(files_.size()), shared_(std::make_unique<Shared>(files_.size())),
      status_(GetMsg(Msg::AudioPreparing)), stemsMeet_(StemsMeet())
{
}

AudioBatch::~AudioBatch() = default;

bool AudioBatch::Stopped()
{
    if (!window_->Step())
        shared_->stop = true;
    return shared_->stop;
}

bool AudioBatch::Run()
{
    const Operation operation{session_};
    window_ = session_.host.BeginProgress(ProgressWindow::Audio, status_);
    window_->AllowStop();
    const bool done = LookAtAll() && !RefuseToReplace() && ConvertAll();
    if (done)
        status_ = GetMsg(Msg::AudioTerminated);
    window_->SetLabel(status_);
    window_.reset();
    return done;
}

bool AudioBatch::LookAtAll()
{
    const bool all = RunOnAllCores(
        files_.size(),
        [&](std::size_t index) { plans_[index] = PlanAudioFile(files_[index], target_.kind); },
        [&] { return !Stopped(); });
    if (!all) {
        status_ = GetMsg(Msg::AudioCancelled);
        return false;
    }
    for (std::size_t i = 0; i < files_.size(); ++i) {
        if (plans_[i].mode == -1) {
            status_ = GetMsg(Msg::AudioCannotConvert,
                             {TextOf(files_[i].filename()), plans_[i].description}) +
                      target_.text + "]";
            if (passesOver_ == PassOver::Always)
                continue;
            session_.host.Tell(Tone::Error, status_, plans_[i].reason);
            if (PassesOver(i))
                continue;
            refused_ = true;
            return false;
        }
        steps_ += static_cast<std::uint64_t>(plans_[i].steps);
    }
    return true;
}

bool AudioBatch::PassesOver(std::size_t index)
{
    const std::string breaks = std::string{lineBreak} + std::string{lineBreak};
    return passesOver_ == PassOver::WhenAsked &&
           session_.host.AskYesNo(
               GetMsg(Msg::AudioAskGoOn, {TextOf(files_[index].filename()) +
                                          "' : " + GetMsg(Msg::AudioStaysAsItIs) + breaks}));
}

/// Told, when a result would take the place of a file that is protected.
bool AudioBatch::RefuseToReplace()
{
    const auto unknown = [&](const Failure& failure) {
        status_ = GetMsg(Msg::FolderNotRead, {failure.subject});
        refused_ = true;
        return !TellFolderNotRead(session_.host, failure);
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
        status_ = GetMsg(
            Msg::AudioOntoItself,
            {TextOf(originals_[static_cast<std::size_t>(own - originals.begin())].filename())});
        session_.host.Tell(Tone::Error, status_);
        refused_ = true;
        return true;
    }
    return false;
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

bool AudioBatch::ConvertAll()
{
    Shared& shared = *shared_;
    ClearLeftoversOfKilled(target_.folder);
    for (std::size_t i = 0; i < files_.size(); ++i) {
        shared.views[i].endTool = [&shared, i, atOnce = session_.host.WorksUnattended()] {
            return shared.ended || (shared.stop && (atOnce || i != shared.head));
        };
        shared.views[i].endConversion = [&shared] { return shared.ended || shared.stop; };
    }
    const Tools tools = ToolsOf(session_);
    const std::size_t ahead = stemsMeet_ ? 0 : 2 * OrderedJobs::Cores();
    OrderedJobs jobs{files_.size(), ahead, [&](std::size_t i) {
                         if (plans_[i].mode != -1 && !shared.views[i].endTool())
                             shared.outcomes[i] = ConvertAudioFile(tools, files_[i], plans_[i],
                                                                   target_, shared.views[i]);
                     }};
    bool going = true;
    for (std::size_t i = 0; i < files_.size() && going; ++i) {
        shared.head = i;
        if (Stopped()) {
            status_ = GetMsg(Msg::AudioCancelled);
            going = false;
            break;
        }
        do {
            ShowProgress(i);
            (void)
                Stopped(); // it takes effect at the next file; our own conversions hear it at once
        } while (!jobs.WaitFor(i, slice));
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

bool AudioBatch::TakeOutcome(std::size_t index, AudioOutcome outcome)
{
    for (const std::string& remark : outcome.remarks)
        session_.host.Tell(Tone::Plain, remark);
    if (outcome.stopped) {
        status_ = GetMsg(Msg::AudioCancelled);
        return false;
    }
    if (outcome.failed && !AskToGoOn(index, outcome.error, outcome.step))
        return false;
    // Only what failed to be encoded is asked about once more, for the file that is missing.
    if (outcome.failed && outcome.step != encodeStep)
        return true;
    const Path place = outcome.name.empty() ? Path{} : target_.folder / outcome.name;
    if (outcome.stands && EqualNames(outcome.name, files_[index].filename().native())) {
        converted_.push_back({files_[index], files_[index]});
        return true;
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
    if (!outcome.failed && reason.empty() && FileExists(place)) {
        const Path result = ResolvePath(place); // an existing spelling stays
        if (stemsMeet_)
            LeaveOutReplaced(index, result);
        converted_.push_back({files_[index], result});
        return true;
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
    session_.host.Tell(Tone::Warning,
                       GetMsg(Msg::AudioSameName,
                              {TextOf(same->source.filename()), TextOf(files_[index].filename()),
                               TextOf(same->result.filename())}));
    converted_.erase(same);
}

bool AudioBatch::AskToGoOn(std::size_t index, std::string error, int step)
{
    error.resize(std::min(error.find('\0'), error.size()));
    const std::string name = TextOf(files_[index].filename());
    const std::string breaks = std::string{lineBreak} + std::string{lineBreak};
    if (session_.host.AskYesNo(GetMsg(Msg::AudioAskGoOn, {name + "' : " + error + breaks})))
        return true;
    status_ = GetMsg(Msg::AudioErrorAt, {StepName(step).text, name}) + error;
    return false;
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
