#pragma once

#include "conversion/audio_item.h"
#include "conversion/sound_converter.h"
#include "session/host.h"
#include "words/message.h"

namespace kestrova
{

/// Brings a list of sound files to one form in one folder: mp3 files are decoded, waves converted
/// or encoded, on all cores; results and questions come in the order of the list. Every file is
/// looked at before anything is touched. An existing file of a result's name is replaced, in one
/// step, by a file that was proved whole.
class AudioBatch
{
public:
    AudioBatch(Host& host, const SoundConverter& converter, std::vector<Path> files,
               const Path& folder, AudioKind target);
    ~AudioBatch();

    /// These files of the person's must not give way to a result: the run is refused before
    /// anything changes when one would.
    void Protect(std::vector<Path> originals) { originals_ = std::move(originals); }

    /// A file that cannot become the target refuses the whole list, unless it is passed over: it
    /// stays as it is, and the others are converted.
    enum class PassOver { Never, WhenAsked, Always };
    void LetPassOver(PassOver when) { passesOver_ = when; }

    /// In a window with a Stop. A failure's sentence is the last line of the window: `Stopped`;
    /// `Refused` when a file of the list cannot become the target, or another one would give way,
    /// which that window has said too, and nothing was changed; `NotDone` after a No to going on.
    Status Run();

    /// A file that came through and what it became, which may be the same file.
    struct Pair {
        Path source;
        Path result;
    };
    [[nodiscard]] const std::vector<Pair>& Converted() const { return converted_; }

private:
    struct Shared;

    Status LookAtAll();
    bool PassesOver(std::size_t index);
    Status RefuseToReplace();
    [[nodiscard]] std::string ResultName(std::size_t index) const;
    Status ConvertAll();
    Status TakeOutcome(std::size_t index, AudioOutcome outcome);
    void LeaveOutReplaced(std::size_t index, const Path& place);
    /// Asks whether to go on; a No is the end.
    Status AskToGoOn(std::size_t index, std::string error, int step);
    void ShowProgress(std::size_t index);
    [[nodiscard]] bool StemsMeet() const;
    bool Stopped();

    Host& host_;
    const Tools tools_;
    std::vector<Path> files_;
    std::vector<Path> originals_;
    AudioTarget target_;
    std::vector<AudioPlan> plans_;
    std::unique_ptr<ProgressScope> window_;
    std::unique_ptr<Shared> shared_;
    PassOver passesOver_ = PassOver::Never;
    const bool stemsMeet_; ///< the order of the list matters
    std::uint64_t steps_ = 0;
    std::uint64_t done_ = 0;
    std::vector<Pair> converted_;
};

/// How a run ended, behind the words of whoever wanted it.
Failure ConversionFailed(Message words, Failure failure);

/// Sources whose sound stands elsewhere now go, after that is on the disk. Files that did not come
/// through stay.
Status DeleteConverted(const AudioBatch& batch);

} // namespace kestrova
