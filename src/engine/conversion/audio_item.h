#pragma once

#include "audio/wave_header.h"
#include "core/staged_file.h"
#include "session/mp3_settings.h"
#include "tools/tools.h"

#include <atomic>
#include <mutex>

/// One file on its way into another form, on whatever thread: nothing that has a name in the target
/// folder is touched before the owner of the list takes the outcome.
namespace kestrova
{

/// What the whole list is brought to.
struct AudioTarget {
    Path folder;
    AudioKind kind = AudioKind::Standard;
    Mp3Settings mp3{}; ///< how it is encoded when the kind is mp3
    std::string text;  ///< as the person reads it
};

/// `44100 stereo 4 bits`, `Mp3 48 Kbps Mono`.
std::string AudioTargetText(AudioKind kind, const Mp3Settings& settings);

/// What the look at a file found before anything is touched.
struct AudioPlan {
    bool mp3 = false;
    int mode = 0; ///< of a wave, as `WaveClass` has it
    std::string description{};
    int steps = 0;
    std::string reason{}; ///< why it cannot be converted, where the description does not say it
    std::string remark{}; ///< what the person has to know of a file that is converted
};
AudioPlan PlanAudioFile(const Path& file, AudioKind target);

/// Told by the worker, shown by the owner.
class AudioItemView
{
public:
    void Show(std::string text);
    /// What was shown since the last asking, in order.
    std::vector<std::string> TakeTexts();
    void SetPart(std::uint64_t done, std::uint64_t total);
    std::atomic<std::uint64_t> partDone{0};
    std::atomic<std::uint64_t> partTotal{0};
    std::atomic<int> steps{0}; ///< finished
    /// An outside tool is to be ended; our own conversion is to end.
    std::function<bool()> endTool;
    std::function<bool()> endConversion;

private:
    std::mutex mutex_;
    std::vector<std::string> texts_;
};

struct AudioOutcome {
    Status status{}; ///< its failure's sentence is what the person is asked about
    int step = 0;    ///< at which it failed
    /// The file is there already under its own name.
    bool stands = false;
    std::string name{}; ///< of the result in the target folder
    std::optional<StagedPlace> made{};
    std::vector<std::string> remarks{}; ///< what the tools had to be told about
};

/// Does what the plan says.
AudioOutcome ConvertAudioFile(const Tools& tools, const Path& file, const AudioPlan& plan,
                              const AudioTarget& target, AudioItemView& view);

} // namespace kestrova
