#include "app/audio_commands.h"

#include "app/opening.h"
#include "app/result_text.h"
#include "audio/sound_info.h"
#include "conversion/audio_batch.h"
#include "conversion/mp3_choices.h"
#include "conversion/sound_converter.h"
#include "core/file_kinds.h"
#include "core/look.h"
#include "core/size_words.h"
#include "core/text.h"
#include "platform/real_path.h"
#include "session/file_to_write.h"
#include "session/telling.h"
#include "words/commands.h"
#include "words/common.h"
#include "words/conversion.h"
#include "words/intake.h"
#include "words/menus.h"

#include <algorithm>
#include <fmt/format.h>
#include <map>
#include <nlohmann/json.hpp>

namespace kestrova
{

namespace
{

struct FormWord {
    std::string_view word;
    AudioKind kind;
};
constexpr FormWord formWords[] = {{"44100s16", AudioKind::Standard},
                                  {"44100s4", AudioKind::Adpcm},
                                  {"22050m16", AudioKind::Mono},
                                  {"mp3", AudioKind::Mp3}};

bool ShowSounds(Run& run, const std::vector<Path>& files)
{
    if (run.json != nullptr)
        *run.json = Json::array();
    bool all = true;
    for (const Path& file : files) {
        const auto info = LookAtSound(file);
        if (!info) {
            all = false;
            TellFailure(run.session.host, GetMsg(Msg::NoSound, {TextOf(file)}), info.Error());
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
                            SizeInWords(static_cast<double>(info->bytes))}));
    }
    return all;
}

/// The number of an option, or what stands without it; no value for a word that is none.
std::optional<int> NumberOf(const Run& run, std::string_view option, int without)
{
    if (!run.arguments.Has(option))
        return without;
    const auto number = WholeNumber<int>(run.arguments.ValueOf(option));
    return number && *number >= 0 ? number : std::nullopt;
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
            run.session.host.Tell(
                Tone::Error,
                GetMsg(Msg::AudioMeets, {TextOf(known->second), TextOf(file), Readable(name)}));
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
        if (platform::IsSameFile(ResolvePath(file), ResolvePath(result)) ||
            DoneOrTold(run.session.host, StatusOf(FileToReplace(run.session.host, result))))
            taken.push_back(file);
        else
            run.session.host.Tell(
                Tone::Plain, GetMsg(Msg::AudioKept, {TextOf(result), TextOf(file.filename())}));
    }
    return taken;
}

bool ConvertSounds(Run& run, std::vector<Path> given, AudioKind kind)
{
    if (ResultsMeet(run, given, kind))
        return false;
    const Path folder = PlaceFromWord(run.arguments.ValueOf("--out"));
    const bool isNew = IsFree(folder).ValueOr(false);
    if (const auto made = MakeFolders(folder); !made) {
        TellFailure(run.session.host, GetMsg(Msg::CannotCreateFolder, {TextOf(folder)}),
                    made.Error());
        return false;
    }
    HearInterrupts();
    const std::vector<Path> files = LeaveOutKept(run, given, folder, kind);
    AudioBatch batch{run.session.host, SoundConverterOf(run.session), files, folder, kind};
    batch.Protect(given);
    const Status done = batch.Run();
    if (!done && done.Error().code != ErrorCode::Refused)
        TellFailure(run.session.host, ConversionFailed(Msg::FailedConversion, done.Error()));
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
    return done && batch.Converted().size() == given.size();
}

/// What the words ask for; no value when there is no such form.
std::optional<AudioKind> FormOf(const Run& run)
{
    const bool encode = run.arguments.words.front() == "encode";
    const std::string format = run.arguments.Has("--format") ? run.arguments.ValueOf("--format")
                               : encode                      ? "mp3"
                                                             : "44100s16";
    const auto* form = std::find_if(std::begin(formWords), std::end(formWords),
                                    [&](const FormWord& row) { return row.word == format; });
    if (form == std::end(formWords) || (encode != (form->kind == AudioKind::Mp3)))
        return std::nullopt;
    return form->kind;
}

std::string WrongInfo(const Arguments& arguments)
{
    for (const auto option : {"--out", "--format", "--bitrate", "--mono", "--frequency"})
        if (arguments.Has(option))
            return GetMsg(Msg::WrongOptionHere, {option, arguments.words.front()});
    return {};
}

std::string WrongAudio(Run& run)
{
    const Arguments& arguments = run.arguments;
    const std::string& what = arguments.words.front();
    if (what != "decode" && what != "encode" && what != "convert" && what != "info")
        return GetMsg(Msg::WrongAudioWord, {what});
    if (what == "info")
        return WrongInfo(arguments);
    if (arguments.ValueOf("--out").empty())
        return GetMsg(Msg::WrongOptionMissing, {"--out"});
    if (what == "convert" && arguments.ValueOf("--format").empty())
        return GetMsg(Msg::WrongOptionMissing, {"--format"});
    const auto form = FormOf(run);
    const std::string format = arguments.ValueOf("--format");
    if (!form)
        return GetMsg(Msg::WrongOptionHere, {"--format " + format, what});
    if (*form != AudioKind::Mp3)
        for (const auto option : {"--bitrate", "--mono", "--frequency"})
            if (arguments.Has(option))
                return GetMsg(
                    Msg::WrongOptionHere,
                    {option, what + " --format " + (format.empty() ? "44100s16" : format)});
    return TakeSettings(run);
}

std::vector<Path> FilesOf(const Run& run)
{
    std::vector<Path> files;
    const auto& words = run.arguments.words;
    for (std::size_t i = 1; i < words.size(); ++i)
        files.push_back(PlaceFromWord(words[i]));
    return files;
}

bool TellSoundInfo(Run& run)
{
    return ShowSounds(run, FilesOf(run));
}

bool Convert(Run& run)
{
    const std::string& what = run.arguments.words.front();
    const std::vector<Path> files = FilesOf(run);
    for (const Path& file : files)
        if (IsFree(file).ValueOr(false)) {
            run.session.host.Tell(Tone::Error, GetMsg(Msg::SourceMissing, {TextOf(file)}));
            return false;
        }
    const std::string_view ending = what == "decode" ? OnDisk::Mp3Extension : OnDisk::WavExtension;
    for (const Path& file : files)
        if (!EndsWithName(file.filename().native(), ending)) {
            run.session.host.Tell(Tone::Error,
                                  GetMsg(Msg::NoFileOfKind, {TextOf(file), ending, what}));
            return false;
        }
    return OpenToLook(run, Needs::Nothing) && ConvertSounds(run, files, *FormOf(run));
}

/// A verb of the terminal that is a tool of the window.
CommandRow VerbRow(std::string_view control, Message caption, std::string_view verb)
{
    return {.window = {.control = control, .caption = caption, .menu = "mnu_ConvertAudio"},
            .terminal = {.word = "audio", .verb = verb},
            .touches = Touches::ItsOwn,
            .run = Convert};
}

} // namespace

std::span<const CommandRow> AudioCommands()
{
    constexpr std::size_t mostFiles = 1'000'000;
    static const CommandRow rows[] = {
        {.terminal = {.word = "audio",
                      .verb = "info",
                      .usage = Msg::UseAudio,
                      .summary = Msg::SumAudio,
                      .json = Msg::KeysAudio,
                      .leastWords = 2,
                      .mostWords = mostFiles,
                      .options = {PlaceOption("--out"), ValueOption("--format"),
                                  ValueOption("--bitrate"), FlagOption("--mono"),
                                  ValueOption("--frequency")},
                      .wrong = WrongAudio},
         .touches = Touches::ItsOwn,
         .run = TellSoundInfo},
        VerbRow("mnu_DecodeMp3", Msg::MenuDecodeMp3, "decode"),
        VerbRow("mnu_EncodeMp3", Msg::MenuEncodeMp3, "encode"),
        VerbRow("mnu_ConvertWav", Msg::MenuConvertWav, "convert"),
    };
    return rows;
}

} // namespace kestrova
