#include "cli/audio_command.h"

#include "audio/sound_info.h"
#include "cli/work.h"
#include "conversion/audio_batch.h"
#include "conversion/mp3_choices.h"
#include "core/file_kinds.h"
#include "core/look.h"
#include "platform/terminal.h"
#include "session/file_to_write.h"
#include "words/cli.h"
#include "words/common.h"
#include "words/conversion.h"
#include "words/intake.h"

#include <algorithm>
#include <charconv>
#include <fmt/format.h>
#include <map>

namespace kestrova
{

namespace
{

constexpr std::string_view command = "audio";

struct FormWord {
    std::string_view word;
    AudioKind kind;
};
constexpr FormWord formWords[] = {{"44100s16", AudioKind::Standard},
                                  {"44100s4", AudioKind::Adpcm},
                                  {"22050m16", AudioKind::Mono},
                                  {"mp3", AudioKind::Mp3}};

Exit ShowSounds(Run& run, const std::vector<Path>& files)
{
    if (run.json != nullptr)
        *run.json = Json::array();
    bool all = true;
    for (const Path& file : files) {
        const auto info = LookAtSound(file);
        if (!info) {
            all = false;
            TellFailure(run.session, GetMsg(Msg::NoSound, {TextOf(file)}), info.Error());
            continue;
        }
        if (run.json != nullptr)
            run.json->push_back({{"file", TextOf(file)},
                                 {"form", info->form},
                                 {"rate", info->rate},
                                 {"channels", info->channels},
                                 {"bits", info->bits},
                                 {"kbits", info->kbits},
                                 {"frames", info->frames},
                                 {"seconds", info->seconds},
                                 {"size", info->bytes}});
        else
            AddLine(run,
                    GetMsg(Msg::SoundLine,
                           {TextOf(file), info->form, std::to_string(info->rate),
                            std::to_string(info->channels), fmt::format("{:.3f}", info->seconds),
                            FormatSize(static_cast<double>(info->bytes))}));
    }
    return all ? Exit::Done : Exit::Failed;
}

/// The number of an option, or what stands without it; no value for a word that is none.
std::optional<int> NumberOf(const Run& run, std::string_view option, int without)
{
    if (!run.arguments.Has(option))
        return without;
    const std::string word = run.arguments.ValueOf(option);
    int number = 0;
    const auto [end, failure] = std::from_chars(word.data(), word.data() + word.size(), number);
    if (failure != std::errc{} || end != word.data() + word.size() || number < 0)
        return {};
    return number;
}

/// What is wrong with the rates; empty when nothing is.
std::string TakeSettings(Run& run)
{
    constexpr int usualBitRate = 128;
    const auto bitRate = NumberOf(run, "--bitrate", usualBitRate);
    if (!bitRate || !IsMp3BitRate(*bitRate))
        return GetMsg(Msg::WrongRate, {"--bitrate", Mp3BitRateList()});
    const auto frequency = NumberOf(run, "--frequency", 0);
    if (!frequency || !IsMp3Frequency(*frequency))
        return GetMsg(Msg::WrongRate, {"--frequency", Mp3FrequencyList()});
    run.session.mp3Settings = {run.arguments.Has("--mono") ? 1 : 2, *bitRate, *frequency};
    return {};
}

std::string ResultName(const Path& file, AudioKind kind)
{
    return StripExtension(file.filename().native()) +
           std::string{kind == AudioKind::Mp3 ? OnDisk::Mp3Extension : OnDisk::WavExtension};
}

/// Two different files that would become one, told; the same file given twice counts once.
bool ResultsMeet(Run& run, std::vector<Path>& files, AudioKind kind)
{
    std::map<std::string, Path> sources;
    std::vector<Path> once;
    for (const Path& file : files) {
        const std::string name = ResultName(file, kind);
        const auto [known, isNew] = sources.emplace(FoldCase(name), file);
        if (isNew) {
            once.push_back(file);
        } else if (ResolvePath(known->second) != ResolvePath(file)) {
            run.host.Tell(Tone::Error, GetMsg(Msg::AudioMeets, {TextOf(known->second), TextOf(file),
                                                                Readable(name)}));
            return true;
        }
    }
    files = std::move(once);
    return false;
}

/// What stands where a result is to go is the person's: without a Yes it stays, and what would
/// replace it is left out.
std::vector<Path> LeaveOutKept(Run& run, const std::vector<Path>& files, const Path& folder,
                               AudioKind kind)
{
    std::vector<Path> taken;
    for (const Path& file : files) {
        const Path result = folder / ResultName(file, kind);
        // A file that would be written over itself is refused below, in words of its own.
        std::error_code none;
        if (std::filesystem::equivalent(ResolvePath(file), ResolvePath(result), none) ||
            FileToReplace(run.session, result))
            taken.push_back(file);
        else
            run.host.Tell(Tone::Plain,
                          GetMsg(Msg::AudioKept, {TextOf(result), TextOf(file.filename())}));
    }
    return taken;
}

Exit ConvertSounds(Run& run, std::vector<Path> given, AudioKind kind)
{
    if (ResultsMeet(run, given, kind))
        return Exit::Failed;
    const Path folder = PlaceFromWord(run.arguments.ValueOf("--out"));
    const bool isNew = IsFree(folder).ValueOr(false);
    if (const auto made = MakeFolders(folder); !made) {
        TellFailure(run.session, GetMsg(Msg::CannotCreateFolder, {TextOf(folder)}), made.Error());
        return Exit::Failed;
    }
    platform::NoteInterrupts(Msg::InterruptNoted.text);
    const std::vector<Path> files = LeaveOutKept(run, given, folder, kind);
    AudioBatch batch{run.session, files, folder, kind};
    batch.Protect(given);
    const bool done = batch.Run();
    if (!done && !batch.Refused())
        run.host.Tell(Tone::Error, GetMsg(Msg::FailedConversion) + batch.StatusText());
    if (isNew && batch.Converted().empty())
        (void)platform::RemoveFolder(folder); // only when nothing was put into it
    if (run.json != nullptr)
        *run.json = Json::array();
    for (const AudioBatch::Pair& pair : batch.Converted()) {
        if (run.json != nullptr)
            run.json->push_back({{"source", TextOf(pair.source)}, {"result", TextOf(pair.result)}});
        else
            AddLine(run, TextOf(pair.result));
    }
    return done && batch.Converted().size() == given.size() ? Exit::Done : Exit::Failed;
}

} // namespace

Exit RunAudio(Run& run)
{
    const auto& words = run.arguments.words;
    const std::string& what = words.front();
    const bool encode = what == "encode";
    if (what != "decode" && !encode && what != "convert" && what != "info")
        return WrongUse(command, GetMsg(Msg::WrongAudioWord, {what}));
    std::vector<Path> files;
    for (std::size_t i = 1; i < words.size(); ++i)
        files.push_back(PlaceFromWord(words[i]));
    const Arguments& arguments = run.arguments;
    if (what == "info") {
        for (const auto option : {"--out", "--format", "--bitrate", "--mono", "--frequency"})
            if (arguments.Has(option))
                return WrongUse(command, GetMsg(Msg::WrongOptionHere, {option, what}));
        return ShowSounds(run, files);
    }
    if (arguments.ValueOf("--out").empty())
        return WrongUse(command, GetMsg(Msg::WrongOptionMissing, {"--out"}));
    if (what == "convert" && arguments.ValueOf("--format").empty())
        return WrongUse(command, GetMsg(Msg::WrongOptionMissing, {"--format"}));
    const std::string format = arguments.Has("--format") ? arguments.ValueOf("--format")
                               : encode                  ? "mp3"
                                                         : "44100s16";
    const auto form = std::find_if(std::begin(formWords), std::end(formWords),
                                   [&](const FormWord& row) { return row.word == format; });
    if (form == std::end(formWords) || (encode != (form->kind == AudioKind::Mp3)))
        return WrongUse(command, GetMsg(Msg::WrongOptionHere, {"--format " + format, what}));
    if (form->kind != AudioKind::Mp3)
        for (const auto option : {"--bitrate", "--mono", "--frequency"})
            if (arguments.Has(option))
                return WrongUse(
                    command, GetMsg(Msg::WrongOptionHere, {option, what + " --format " + format}));
    if (const std::string wrong = TakeSettings(run); !wrong.empty())
        return WrongUse(command, wrong);
    for (const Path& file : files)
        if (IsFree(file).ValueOr(false)) {
            run.host.Tell(Tone::Error, GetMsg(Msg::SourceMissing, {TextOf(file)}));
            return Exit::Failed;
        }
    const std::string_view ending = what == "decode" ? OnDisk::Mp3Extension : OnDisk::WavExtension;
    for (const Path& file : files)
        if (!EndsWithName(file.filename().native(), ending)) {
            run.host.Tell(Tone::Error, GetMsg(Msg::NoFileOfKind, {TextOf(file), ending, what}));
            return Exit::Failed;
        }
    if (!BeginLooking(run, Needs::Nothing))
        return Exit::Failed;
    return ConvertSounds(run, files, form->kind);
}

} // namespace kestrova
