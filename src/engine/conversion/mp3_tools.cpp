#include "conversion/mp3_tools.h"

#include "audio/mpeg_frames.h"
#include "audio/wave_chunks.h"
#include "audio/wave_header.h"
#include "audio/wave_reader.h"
#include "conversion/sound_lines.h"
#include "conversion/sound_tools.h"
#include "core/staged_file.h"
#include "platform/places.h"
#include "tools/tool_output.h"
#include "words/audio.h"
#include "words/conversion.h"
#include "words/tools.h"

#include <algorithm>
#include <cstdlib>

namespace kestrova
{

namespace
{

std::string LastLineOf(const std::string& output)
{
    const std::string lines = LastLines(output);
    const std::size_t end = lines.find_last_of("\r\n");
    return end == std::string::npos ? lines : lines.substr(end + 1);
}

/// The tool's own last words when it left nothing, and what it said when it failed.
Status RunAudioTool(const Tools& tools, const ToolWork& work, const Path& made,
                    const ToolProgressState& state, ToolReport& report)
{
    Status ended = RunTool(tools, work, state, report);
    ClearToolProgress(state);
    if (!ended || FileExists(made))
        return ended;
    const std::string words = LastLineOf(report.output);
    return InWords(ErrorCode::NotDone, words.empty() ? GetMsg(Msg::Mp3NotWhole) : words);
}

/// Decoder and encoder may leave out a few frames at the ends, and what is damaged.
constexpr std::uint64_t framesOfGrace = 4;

bool HoldsEnough(std::uint64_t made, std::uint64_t needed, std::uint64_t frame)
{
    return made + framesOfGrace * frame + needed / 100 >= needed;
}

// How madplay tells of a frame from which no sound came: `error: frame 12: CRC check failed`.
constexpr std::string_view frameError = "error: frame ";
constexpr std::string_view checksumError = ": CRC check failed"; // not shown

std::size_t CountOf(std::string_view words, std::string_view text)
{
    std::size_t count = 0;
    for (std::size_t at = text.find(words); at != std::string_view::npos;
         at = text.find(words, at + words.size()))
        ++count;
    return count;
}

/// Nothing in it is louder than what rounding leaves.
bool IsSilent(const Path& wave)
{
    constexpr int loudest = 4;
    auto reader = WaveReader::Open(wave);
    if (!reader)
        return true;
    constexpr std::size_t pieceFrames = 32768;
    std::vector<std::int16_t> samples(pieceFrames * static_cast<std::size_t>(reader->Channels()));
    while (const std::size_t got = reader->Read(std::span(samples)))
        for (std::size_t i = 0; i < got * static_cast<std::size_t>(reader->Channels()); ++i)
            if (std::abs(samples[i]) > loudest)
                return false;
    return true;
}

/// True when so many frames gave no sound that the mp3 must not be replaced by what came out.
bool IsMostlyDamaged(const std::string& output, const MpegFacts& sound, const Path& wave)
{
    constexpr std::uint64_t tenth = 10;
    const std::uint64_t errors = CountOf(frameError, output);
    return errors > 0 &&
           ((errors > framesOfGrace && errors * tenth > sound.frames) || IsSilent(wave));
}

} // namespace

Status DecodeMp3(const Tools& tools, const Path& source, const Path& destination,
                 const ToolProgressState& state)
{
    const Path place = platform::AbsolutePath(ResolvePath(source));
    if (!FileExists(place))
        return InWords(ErrorCode::Missing, GetMsg(Msg::Mp3NotFound) + TextOf(source));
    if (FindTool(tools, Decoder()).empty())
        return InWords(ErrorCode::Missing, GetMsg(Msg::DecoderMissing),
                       InstallHint(tools, Decoder()));
    const auto bytes = ReadWholeFile(place);
    if (!bytes)
        return InWords(bytes.Error().code, GetMsg(Msg::Mp3NotRead) + TextOf(source),
                       bytes.Error().reason);
    const MpegFacts sound = ScanMpeg(*bytes);
    if (sound.frames == 0)
        return InWords(ErrorCode::Damaged,
                       GetMsg(WalkWave(place) ? Msg::Mp3IsWave : Msg::Mp3Silent));

    StagedPlace wave{destination};
    // The decoder believes a tag's size and would skip all that there is.
    const StagedPlace bare{destination};
    const auto notCopied = [&](const Failure& failure) {
        return InWords(failure.code, GetMsg(Msg::ErrorCopyingWave) + TextOf(destination),
                       failure.reason);
    };
    if (sound.tagLies)
        if (const auto cut =
                WriteWholeFile(bare.Staged(), std::string_view{*bytes}.substr(sound.start), false);
            !cut)
            return notCopied(cut.Error());
    const auto seconds = static_cast<std::uint64_t>(std::max(DurationOfMpeg(*bytes), 1));
    ToolReport report;
    const auto decode = [&](Checksums checksums) {
        const Path& mp3 = sound.tagLies ? bare.Staged() : place;
        return RunAudioTool(tools,
                            {.tool = Decoder(),
                             .arguments = DecoderArguments(mp3, wave.Staged(), checksums),
                             .parser = [seconds] { return GestioneMadPlay(seconds); }},
                            wave.Staged(), state, report);
    };
    Status decoded = decode(Checksums::Heeded);
    // Programs that change the volume of an mp3 leave its checksums as they were.
    if (decoded && report.output.find(checksumError) != std::string::npos)
        decoded = decode(Checksums::Ignored);
    if (!decoded)
        return decoded;
    if (IsMostlyDamaged(report.output, sound, wave.Staged()))
        return InWords(ErrorCode::Damaged, GetMsg(Msg::Mp3NotDecoded), {},
                       LastLines(report.output));
    const auto facts = WalkWave(wave.Staged());
    if (!facts || facts->frames == 0 ||
        !HoldsEnough(facts->frames, sound.samples, sound.first.samples))
        return InWords(ErrorCode::Damaged, GetMsg(Msg::Mp3NotWhole), {}, LastLines(report.output));
    if (const auto moved = wave.MoveTo(destination); !moved)
        return notCopied(moved.Error());
    return {};
}

Status EncodeMp3(const Tools& tools, const Mp3Settings& settings, const Path& source,
                 const Path& destination, const ToolProgressState& state)
{
    if (FindTool(tools, Encoder()).empty())
        return InWords(ErrorCode::Missing,
                       GetMsg(Msg::EncoderMissing, {TextOf(tools.programFolder), lineBreak}),
                       InstallHint(tools, Encoder()));
    WavHeader header;
    if (!ReadWavHeader(source, header))
        return InWords(ErrorCode::Refused,
                       GetMsg(Msg::WaveNotStandard, {TextOf(source.filename())}));
    const Path place = platform::AbsolutePath(ResolvePath(source));
    const auto sound = WalkWave(place);
    if (!sound || sound->formatTag != waveTagPcm)
        return InWords(ErrorCode::Damaged, GetMsg(Msg::WaveNotReadable));

    StagedPlace mp3{destination};
    ToolReport report;
    if (auto encoded = RunAudioTool(tools,
                                    {.tool = Encoder(),
                                     .arguments = EncoderArguments(place, mp3.Staged(), settings),
                                     .parser = GestioneLame},
                                    mp3.Staged(), state, report);
        !encoded)
        return encoded;
    const auto bytes = ReadWholeFile(mp3.Staged());
    const MpegFacts made = bytes ? ScanMpeg(*bytes) : MpegFacts{};
    if (made.frames == 0 ||
        !HoldsEnough(made.samples * sound->rate / static_cast<std::uint64_t>(made.first.rate),
                     sound->frames, made.first.samples))
        return InWords(ErrorCode::Damaged, GetMsg(Msg::Mp3NotWhole), {}, LastLines(report.output));
    if (const auto moved = mp3.MoveTo(destination); !moved)
        return InWords(moved.Error().code, GetMsg(Msg::WaveNotWritten), moved.Error().reason);
    return {};
}

} // namespace kestrova
