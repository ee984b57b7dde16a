#include "audio/mp3_tools.h"

#include "audio/mpeg_frames.h"
#include "audio/wave_chunks.h"
#include "audio/wave_header.h"
#include "core/staged_file.h"

#include <algorithm>

namespace kestrova
{

namespace
{

bool Fail(ToolProgressState& state, std::string error, std::string details = {})
{
    state.error = std::move(error);
    state.details = std::move(details);
    return false;
}

std::string InstallHint(const Session& session, const ToolRow& row)
{
    return GetMsg(Msg::ToolInstallHint, {row.name, TextOf(session.programFolder), row.package});
}

std::string LastLineOf(const std::string& output)
{
    const std::string lines = LastLines(output);
    const std::size_t end = lines.find_last_of("\r\n");
    return end == std::string::npos ? lines : lines.substr(end + 1);
}

/// The tool's own last words when it left nothing, and what it said when it failed.
bool RunAudioTool(Session& session, const ToolRun& run, const Path& made, ToolProgressState& state)
{
    const bool ended = RunTool(session, run, state);
    ClearToolProgress(state);
    if (!ended)
        return false;
    if (!FileExists(made)) {
        const std::string words = LastLineOf(state.output);
        return Fail(state, words.empty() ? GetMsg(Msg::Mp3NotWhole) : words);
    }
    return true;
}

/// Decoder and encoder may leave out a few frames at the ends, and what is damaged.
constexpr std::uint64_t framesOfGrace = 4;

bool HoldsEnough(std::uint64_t made, std::uint64_t needed, std::uint64_t frame)
{
    return made + framesOfGrace * frame + needed / 100 >= needed;
}

} // namespace

bool DecodeMp3(Session& session, const Path& source, const Path& destination,
               ToolProgressState& state)
{
    state.error.clear();
    state.details.clear();
    const Path place = std::filesystem::absolute(ResolvePath(source));
    if (!FileExists(place))
        return Fail(state, GetMsg(Msg::Mp3NotFound) + TextOf(source));
    const ToolRow& row = RowOf(ToolId::Madplay);
    if (FindTool(session, row).empty())
        return Fail(state, GetMsg(Msg::DecoderMissing), InstallHint(session, row));
    const auto bytes = ReadWholeFile(place);
    if (!bytes)
        return Fail(state, GetMsg(Msg::Mp3NotRead) + TextOf(source), bytes.Error().reason);
    const MpegFacts sound = ScanMpeg(*bytes);
    if (sound.frames == 0)
        return Fail(state, GetMsg(Msg::Mp3Silent));

    StagedPlace wave{destination};
    // The decoder believes a tag's size and would skip all that there is.
    const StagedPlace bare{destination};
    if (sound.tagLies)
        if (const auto cut =
                WriteWholeFile(bare.Staged(), std::string_view{*bytes}.substr(sound.start), false);
            !cut)
            return Fail(state, GetMsg(Msg::ErrorCopyingWave) + TextOf(destination),
                        cut.Error().reason);
    ToolRun run{ToolId::Madplay, row.decode(sound.tagLies ? bare.Staged() : place, wave.Staged()),
                Msg::HandlerMadPlay};
    run.total = static_cast<std::uint64_t>(std::max(DurationOfMpeg(*bytes), 1));
    if (!RunAudioTool(session, run, wave.Staged(), state))
        return false;
    const auto facts = WalkWave(wave.Staged());
    if (!facts || facts->frames == 0 ||
        !HoldsEnough(facts->frames, sound.samples, sound.first.samples))
        return Fail(state, GetMsg(Msg::Mp3NotWhole), LastLines(state.output));
    if (const auto moved = wave.MoveTo(destination); !moved)
        return Fail(state, GetMsg(Msg::ErrorCopyingWave) + TextOf(destination),
                    moved.Error().reason);
    return true;
}

bool EncodeMp3(Session& session, const Path& source, const Path& destination,
               ToolProgressState& state)
{
    state.error.clear();
    state.details.clear();
    const ToolRow& row = RowOf(ToolId::Lame);
    if (FindTool(session, row).empty())
        return Fail(state, GetMsg(Msg::EncoderMissing, {TextOf(session.programFolder), lineBreak}),
                    InstallHint(session, row));
    WavHeader header;
    if (!ReadWavHeader(source, header))
        return Fail(state, GetMsg(Msg::WaveNotStandard, {TextOf(source.filename())}));
    const Path place = std::filesystem::absolute(ResolvePath(source));
    const auto sound = WalkWave(place);
    if (!sound || sound->formatTag != waveTagPcm)
        return Fail(state, GetMsg(Msg::WaveNotReadable));

    StagedPlace mp3{destination};
    ToolRun run{ToolId::Lame, row.encode(place, mp3.Staged(), session.mp3Settings),
                Msg::HandlerLame};
    if (!RunAudioTool(session, run, mp3.Staged(), state))
        return false;
    const auto bytes = ReadWholeFile(mp3.Staged());
    const MpegFacts made = bytes ? ScanMpeg(*bytes) : MpegFacts{};
    if (made.frames == 0 ||
        !HoldsEnough(made.samples * sound->rate / static_cast<std::uint64_t>(made.first.rate),
                     sound->frames, made.first.samples))
        return Fail(state, GetMsg(Msg::Mp3NotWhole), LastLines(state.output));
    if (const auto moved = mp3.MoveTo(destination); !moved)
        return Fail(state, GetMsg(Msg::WaveNotWritten), moved.Error().reason);
    return true;
}

} // namespace kestrova
